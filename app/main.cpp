// Start-up: the Qt platform (sockets, timers, dialogs, the desktop's web
// browser), the bot's core, and the main window over it.
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QUrl>

#include "app/leaderboard_server.h"
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

    // The leaderboard page: this machine only, unless the operator names an
    // address (--leaderboard-address) or a port (--leaderboard-port).
    QString address = LeaderboardServer::kDefaultAddress;
    quint16 port = LeaderboardServer::kDefaultPort;
    const QStringList args = QCoreApplication::arguments();
    for (qsizetype i = 1; i + 1 < args.size(); ++i) {
        if (args[i] == "--leaderboard-address") address = args[i + 1];
        if (args[i] == "--leaderboard-port") port = static_cast<quint16>(args[i + 1].toUInt());
    }
    LeaderboardServer leaderboardServer(history, [&bot] {
        leaderboard::LiveGame live;
        game::Game& g = bot.game;
        if (g.PendingAnswer()) {
            live.puzzle = g.PuzzleLine();
            if (g.GameOn) live.secondsLeft = std::max(0, g.IdleTime - g.IdleCount);
        }
        live.topic = g.Lists().CurrentTopic();
        for (const auto& entry : g.Scores().Ranking())
            live.scores.emplace_back(entry.name, entry.score);
        return live;
    });
    QString listenError;
    if (!leaderboardServer.Listen(QHostAddress(address), port, listenError))
        bot.errors.Append(ToCp1252(listenError));

    FrmMain frmMain(bot);
    AttachHistory(frmMain, history, dialogs, bot.errors);
    window = &frmMain;
    dialogs.SetParent(&frmMain);
    frmMain.show();
    const int code = app.exec();
    // The history goes before the bot: nothing may record into it after.
    bot.game.SetHistory(nullptr);
    bot.commands.SetHistory(nullptr);
    return code;
}
