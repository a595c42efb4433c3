// Start-up: the Qt platform (sockets, timers, dialogs, the desktop's web
// browser), the bot's core, and the main window over it.
#include <QApplication>
#include <QDesktopServices>
#include <QUrl>

#include "app/qt_clock.h"
#include "app/qt_dialogs.h"
#include "app/qt_socket_layer.h"
#include "app/qt_timer.h"
#include "panel/frm_main.h"
#include "session/bot.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);

    QtSocketLayer sockets;
    QtClock clock;
    QtTimer tmrMsgPause(1000), tmrIdle(1000), tmrTopics(25000), tmrCcoms(10000), tmrCcom2(10000),
        tmrDeadline(1000);
    QtDialogs dialogs;
    FrmMain* window = nullptr;
    session::Bot bot({sockets, tmrMsgPause, tmrIdle, tmrTopics, tmrCcoms, tmrCcom2, tmrDeadline,
                      dialogs,
                      [](const std::string& url) {
                          QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
                      },
                      [&window] {
                          if (window) window->ShowTopicPicker();
                      },
                      QCoreApplication::applicationDirPath().toLocal8Bit().toStdString()});

    // Lines wait for the server's rate limits; idle connections get keep-alives.
    bot.client.SetClock(&clock);

    FrmMain frmMain(bot);
    window = &frmMain;
    dialogs.SetParent(&frmMain);
    frmMain.show();
    return app.exec();
}
