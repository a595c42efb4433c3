// Start-up: the Qt platform (sockets, timers, dialogs, the desktop's web
// browser), the bot's core, and the main window over it; or, with
// --headless, the same bot without any display.
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>
#include <cstdio>

#include "app/command_line.h"
#include "app/game_records.h"
#include "app/headless.h"
#include "app/qt_bot_timers.h"
#include "app/qt_dialogs.h"
#include "app/qt_socket_layer.h"
#include "panel/frm_main.h"
#include "panel/history_panel.h"
#include "session/bot.h"

namespace {

// The settings file lives in the program's folder; installed where that is
// not writable (/usr/bin), it lives in the user's configuration folder.
std::string ProgramFolder() {
    const QString folder = QCoreApplication::applicationDirPath();
    if (QFileInfo(folder).isWritable()) return folder.toLocal8Bit().toStdString();
    const QString config = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    QDir().mkpath(config);
    return config.toLocal8Bit().toStdString();
}

}  // namespace

int main(int argc, char** argv) {
    const CommandLine line = ParseCommandLine(std::vector<std::string>(argv, argv + argc));
    const std::string program = "vexmor-scrambler";
    if (!line.error.empty()) {
        std::fprintf(stderr, "%s: %s\nTry '%s --help'.\n", program.c_str(), line.error.c_str(),
                     program.c_str());
        return 2;
    }
    if (line.help) {
        std::fputs(UsageText(program).c_str(), stdout);
        return 0;
    }
    if (line.version) {
        std::printf("%s %s\n", program.c_str(), SCRAMBLER_VERSION);
        return 0;
    }
    if (line.headless) return RunHeadless(argc, argv, line);

    QApplication app(argc, argv);
    QCoreApplication::setApplicationName("vexmor-scrambler");

    QtSocketLayer sockets;
    QtBotTimers timers;
    QtDialogs dialogs;
    FrmMain* window = nullptr;
    const std::string folder = ProgramFolder();
    session::Bot bot(timers.Platform(
        sockets, dialogs, folder,
        [](const std::string& url) {
            QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
        },
        [&window] {
            if (window) window->ShowTopicPicker();
        }));
    timers.Attach(bot, true);

    // Every game is remembered in a file beside the settings file, and shown
    // on the leaderboard page.
    GameRecords records(bot, folder, QString::fromStdString(line.leaderboardAddress),
                        static_cast<quint16>(line.leaderboardPort));

    FrmMain frmMain(bot);
    AttachHistory(frmMain, records.History(), dialogs, bot.errors);
    window = &frmMain;
    dialogs.SetParent(&frmMain);
    frmMain.show();
    return app.exec();
}
