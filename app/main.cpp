// Start-up: the Qt platform (sockets, timers, dialogs, the desktop's web
// browser), the bot's core, and the main window over it.
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QUrl>

#include "app/qt_dialogs.h"
#include "app/qt_socket_layer.h"
#include "app/qt_timer.h"
#include "historydb/history_service.h"
#include "panel/cp1252.h"
#include "panel/frm_main.h"
#include "panel/history_panel.h"
#include "session/bot.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);

    QtSocketLayer sockets;
    QtTimer tmrMsgPause(1000), tmrIdle(1000), tmrTopics(25000), tmrCcoms(10000), tmrCcom2(10000);
    QtDialogs dialogs;
    FrmMain* window = nullptr;
    session::Bot bot({sockets, tmrMsgPause, tmrIdle, tmrTopics, tmrCcoms, tmrCcom2, dialogs,
                      [](const std::string& url) {
                          QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
                      },
                      [&window] {
                          if (window) window->ShowTopicPicker();
                      },
                      QCoreApplication::applicationDirPath().toLocal8Bit().toStdString()});

    // Every game is remembered in a file beside the settings file.
    HistoryService history;
    if (!history.Open(QDir(QCoreApplication::applicationDirPath())
                          .filePath(QString::fromLatin1(HistoryService::kFileName))))
        bot.errors.Append(ToCp1252(history.Error()));
    bot.game.SetHistory(&history);
    bot.commands.SetHistory(&history.Record());

    FrmMain frmMain(bot);
    AttachHistory(frmMain, history, dialogs, bot.errors);
    window = &frmMain;
    dialogs.SetParent(&frmMain);
    frmMain.show();
    return app.exec();
}
