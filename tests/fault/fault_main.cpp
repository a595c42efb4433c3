// The fault run: the bot plays the local server (a separate process) while
// the server cuts it off every few seconds, in turn by resetting its
// connections, by stopping the server (its sign-off frame: the server is
// restarting) and by killing the whole server process, each time starting
// it again on the same port. After each outage the bot must be back in the room with the game
// going on, and the room must receive every line the bot sent exactly once
// and in order. It reports the time from each outage to the bot's first line
// back.
//
//   fault_run [--seconds N] [--every S] [--topics DIR]
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <iostream>

#include "app/qt_bot_timers.h"
#include "game/style.h"
#include "session/bot.h"
#include "support/fake_dialogs.h"
#include "support/server_process.h"

using testing_support::Option;

namespace {

struct Outage {
    const char* kind;
    qint64 startMs = 0;
    qint64 firstLineMs = -1;  // the bot's first line in the room after it
    int gameLinesAfter = 0;   // lines other than the join banner since then
};

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    const int seconds = Option(args, "--seconds", "300").toInt();
    const int every = std::max(5, Option(args, "--every", "20").toInt());
    const QString topics = QDir(Option(args, "--topics", "topics")).absolutePath();
    const std::vector<std::string> kinds = {"connection reset", "sign-off frame", "server killed"};

    testing_support::RecordingSockets sockets;
    testing_support::ServerProcess server(sockets);
    QElapsedTimer clock;
    clock.start();
    std::vector<Outage> outages;
    const std::string banner = game::JoinBanner();
    server.onBotLine = [&](const std::string& text) {
        if (outages.empty()) return;
        Outage& last = outages.back();
        if (last.firstLineMs < 0) last.firstLineMs = clock.elapsed();
        if (text.find(banner) == std::string::npos) ++last.gameLinesAfter;
    };
    const QStringList serverArgs = {"--topics", topics, "--seed", "7"};
    server.Start(serverArgs);
    if (!server.Listening()) return 1;

    testing_support::FakeDialogs dialogs;
    QtBotTimers timers;
    session::Bot bot(timers.Platform(sockets, dialogs, QDir::tempPath().toStdString()));
    timers.Attach(bot, true);
    bot.game.SendPause = 1;
    bot.game.IdleTime = 5;
    bot.game.ScoreLimit = 10;
    for (const QString& name : QDir(topics).entryList({"*.csv"}, QDir::Files, QDir::Name)) {
        const std::string topic = name.section('.', 0, 0).toStdString();
        bot.topicFiles.AutoLoadTopic(topic, QDir(topics).filePath(name).toStdString());
        bot.game.Lists().AddTopicList(topic);
    }
    bot.session.cmdSignOn_Click(
        {"Fault Bot", "faultpass", "127.0.0.1", std::to_string(server.port)});
    bool ok = testing_support::WaitFor([&] { return bot.game.SignedOn; }, 10000);
    bot.session.cmdJoin_Click("Word Games", "4");
    ok = ok && testing_support::WaitFor([&] { return !bot.client.Chat().empty(); }, 10000);
    bot.game.cmdAutoSendOn_Click();
    if (!ok || !bot.game.GameOn) {
        std::cerr << "The game did not start.\n";
        return 1;
    }

    QTimer faults;
    faults.setInterval(every * 1000);
    QObject::connect(&faults, &QTimer::timeout, [&] {
        const std::string& kind = kinds[outages.size() % kinds.size()];
        outages.push_back({kind.c_str(), clock.elapsed()});
        if (kind == "connection reset") {
            server.process.write("drop Fault Bot\n");
        } else {
            server.Stop(kind == "server killed");
            server.Start(serverArgs, server.port);
        }
    });
    faults.start();
    QEventLoop play;
    QTimer::singleShot(seconds * 1000, &play, &QEventLoop::quit);
    play.exec();
    faults.stop();

    // The last outage gets its time to come back, then play stops.
    testing_support::WaitFor([&] { return outages.empty() || outages.back().gameLinesAfter > 0; },
                             60000);
    bot.game.cmdAutoSendOff_Click();
    testing_support::WaitFor([&] { return sockets.sent.empty(); }, 5000);
    bot.session.cmdSignOff_Click();
    server.Stop();

    std::vector<qint64> backMs;  // of the outages the bot and the game came back from
    std::cout << "Fault run: " << seconds << " s, an outage every " << every << " s\n";
    for (const Outage& o : outages) {
        const qint64 back = o.firstLineMs < 0 ? -1 : o.firstLineMs - o.startMs;
        std::cout << "  " << o.kind << " at " << o.startMs / 1000 << " s: first line back after "
                  << back << " ms, " << o.gameLinesAfter << " game lines after\n";
        if (back >= 0 && o.gameLinesAfter > 0) backMs.push_back(back);
    }
    for (const std::string& line : sockets.lost)
        std::cout << "  lost: " << line << "\n";
    int boxes = 0;
    for (const auto& m : dialogs.messages)
        boxes += m.text.find("lost") != std::string::npos;
    std::cout << "Outages: " << outages.size()
              << ", recovered with the game going on: " << backMs.size() << "\n"
              << "Outage to the bot's first line back: median "
              << testing_support::Percentile(backMs, 0.5) << " ms, worst "
              << testing_support::Percentile(backMs, 1.0) << " ms\n"
              << sockets.Summary() << "\n"
              << "Message boxes about a lost connection: " << boxes << "\n";
    const bool passed =
        !outages.empty() && backMs.size() == outages.size() && sockets.AllArrived() && boxes == 0;
    std::cout << (passed ? "1 passed, 0 failed" : "0 passed, 1 failed") << "\n";
    return passed ? 0 : 1;
}
