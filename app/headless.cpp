#include "app/headless.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QSocketNotifier>
#include <QTimer>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "app/game_records.h"
#include "app/qt_bot_timers.h"
#include "app/qt_socket_layer.h"
#include "game/product.h"
#include "panel/cp1252.h"
#include "session/bot.h"

namespace {

// One line per event, with the time, on standard error.
void Log(const std::string& text) {
    const QByteArray stamp = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs).toUtf8();
    std::fprintf(stderr, "%s %s\n", stamp.constData(), text.c_str());
    std::fflush(stderr);
}

// Every box the window would open becomes a log line; questions get the
// cautious answer, file dialogs are cancelled.
class LogDialogs : public game::OperatorDialogs {
  public:
    void ShowMessage(const std::string& text, const std::string& title,
                     game::MessageKind) override {
        Log(title + ": " + text);
    }
    bool AskYesNo(const std::string& text, const std::string& title) override {
        Log(title + ": " + text + " (answered No)");
        return false;
    }
    std::string Prompt(const std::string& prompt, const std::string& title,
                       const std::string& defaultText) override {
        Log(title + ": " + prompt + " (answered '" + defaultText + "')");
        return defaultText;
    }
    std::optional<std::string> OpenFile(const game::FileDialogRequest& request) override {
        Log(request.title + " (no file chosen)");
        return std::nullopt;
    }
    std::optional<std::string> SaveFile(const game::FileDialogRequest& request) override {
        Log(request.title + " (no file chosen)");
        return std::nullopt;
    }
};

// The error log's new rows go to the log as well.
class ErrorRows : public game::ListObserver {
  public:
    explicit ErrorRows(game::StringList& rows) : rows_(rows) {}
    void RowsAboutToBeInserted(int first, int) override { first_ = first; }
    void RowsInserted() override {
        for (int row = first_; row < rows_.Count(); ++row)
            Log("Error log: " + rows_.At(row));
    }

  private:
    game::StringList& rows_;
    int first_ = 0;
};

int signalPipe[2] = {-1, -1};

void OnSignal(int number) {
    const char byte = static_cast<char>(number);
    // Nothing else is safe in a signal handler; the event loop does the rest.
    [[maybe_unused]] const auto written = ::write(signalPipe[1], &byte, 1);
}

std::optional<std::string> ReadPassword(const CommandLine& line) {
    if (!line.passwordFile.empty()) {
        std::ifstream file(line.passwordFile, std::ios::binary);
        std::string first;
        if (!file || !std::getline(file, first)) return std::nullopt;
        while (!first.empty() && (first.back() == '\r' || first.back() == '\n'))
            first.pop_back();
        return first;
    }
    if (const char* value = std::getenv(kPasswordVariable)) return std::string(value);
    return std::nullopt;
}

}  // namespace

int RunHeadless(int argc, char** argv, const CommandLine& line) {
    QCoreApplication app(argc, argv);

    const std::optional<std::string> password = ReadPassword(line);
    if (!password || password->empty()) {
        Log(line.passwordFile.empty()
                ? std::string("No password: set ") + kPasswordVariable + " or use --password-file."
                : "Cannot read a password from '" + line.passwordFile + "'.");
        return 1;
    }
    const QFileInfo settingsInfo(QString::fromLocal8Bit(line.settingsFile.c_str()));
    if (!settingsInfo.isFile()) {
        Log("Cannot read the settings file '" + line.settingsFile + "'.");
        return 1;
    }

    QtSocketLayer sockets;
    QtBotTimers timers;
    LogDialogs dialogs;
    const std::string folder = settingsInfo.absolutePath().toLocal8Bit().toStdString();
    session::Bot bot(timers.Platform(
        sockets, dialogs, folder,
        [](const std::string& url) { Log("Not opening " + url + " without a window."); },
        [] { Log("The topic picker needs the window; the topics stay as they are."); }));
    timers.Attach(bot, true);

    ErrorRows errorRows(bot.errors);
    bot.errors.SetObserver(&errorRows);
    bot.console.SetObserver([](std::string_view appended, bool cleared) {
        if (cleared) return;
        std::string text(appended);
        while (!text.empty() && (text.back() == '\n' || text.back() == '\r'))
            text.pop_back();
        if (!text.empty()) Log(text);
    });

    // Every game remembered beside the settings file, and the leaderboard page.
    GameRecords records(bot, folder, QString::fromStdString(line.leaderboardAddress),
                        static_cast<quint16>(line.leaderboardPort));

    Log(std::string(game::kProductTitle) + " without a window, settings from '" +
        line.settingsFile + "'.");
    const files::SettingsFields fields = bot.settings.LoadFrom(line.settingsFile, {});
    bot.client.SetCapabilityOptions({fields.chkFullCaps, fields.chkLock});
    bot.session.SetAutoReconnect(fields.chkReconnect);

    int exitCode = 0;
    std::string info = bot.session.lblInfo(), chatStatus = bot.session.lblChatStatus();
    bot.session.SetChangeObserver([&] {
        if (bot.session.lblInfo() != info) Log("Status: " + (info = bot.session.lblInfo()));
        if (bot.session.lblChatStatus() != chatStatus) {
            Log("Room: " + (chatStatus = bot.session.lblChatStatus()));
        }
        // Refused for good: nothing left to do without an operator.
        if (!bot.reconnector->StopReason().empty() && exitCode == 0) {
            exitCode = 3;
            QTimer::singleShot(0, &app, [&app] { app.exit(3); });
        }
    });
    // In the room: play whatever the settings loaded, unless a game is
    // already going on (a rejoin resumes it where it stood).
    bot.session.SetJoinedObserver([&bot] {
        game::Game& game = bot.game;
        if (game.GameOn || game.Suspended()) return;
        if (game.Lists().lstWords().Empty()) {
            for (const game::TopicClass& topic : game.Lists().Topics())
                game.Lists().AddTopicList(topic.GetTopic());
        }
        game.cmdAutoSendOn_Click();
    });

    // Signals reach the event loop through a pipe.
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, signalPipe) != 0) {
        Log("Cannot set up signal handling.");
        return 1;
    }
    QSocketNotifier notifier(signalPipe[0], QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, [&] {
        char number = 0;
        if (::read(signalPipe[0], &number, 1) != 1) return;
        if (number == SIGHUP) {
            std::vector<std::pair<std::string, std::string>> topics;
            for (const game::TopicClass& topic : bot.game.Lists().Topics())
                topics.emplace_back(topic.GetTopic(), topic.GetDir());
            for (const auto& [name, path] : topics) {
                bot.game.Lists().RemoveTopic(name);
                bot.topicFiles.AutoLoadTopic(name, path);
            }
            Log("SIGHUP: reloaded " + std::to_string(topics.size()) + " topic files.");
            return;
        }
        Log(std::string(number == SIGINT ? "SIGINT" : "SIGTERM") + ": signing off.");
        bot.session.cmdSignOff_Click();
        app.exit(exitCode);
    });
    struct sigaction action = {};
    action.sa_handler = OnSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int number : {SIGTERM, SIGINT, SIGHUP})
        sigaction(number, &action, nullptr);

    const std::string port = fields.txtPort.empty() ? "5190" : fields.txtPort;
    bot.session.cmdSignOn_Click({fields.txtSN, *password, fields.cmbServers, port});
    if (!fields.txtChat.empty()) {
        bot.session.SetRoomToKeep(fields.txtChat,
                                  fields.txtEx.empty() ? 4 : std::atoi(fields.txtEx.c_str()));
    }
    bot.reconnector->Arm();
    const int code = app.exec();
    bot.console.SetObserver(nullptr);
    bot.errors.SetObserver(nullptr);
    bot.session.SetChangeObserver(nullptr);
    return code;
}
