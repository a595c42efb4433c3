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
#include <sys/prctl.h>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>
#include <algorithm>
#include <csignal>
#include <deque>
#include <iostream>

#include "app/qt_bot_timers.h"
#include "app/qt_socket_layer.h"
#include "game/style.h"
#include "oscar/encoding.h"
#include "session/bot.h"
#include "support/fake_dialogs.h"
#include "support/qt_wait.h"

namespace {

QString Option(const QStringList& args, const QString& name, const QString& fallback) {
    const auto at = args.indexOf(name);
    return at >= 0 && at + 1 < args.size() ? args[at + 1] : fallback;
}

// The program's sockets, noting the text of every chat line written.
class RecordingSockets : public oscar::SocketLayer {
  public:
    void SetListener(oscar::SocketListener* listener) override { inner_.SetListener(listener); }
    void Create(int index) override { inner_.Create(index); }
    void Destroy(int index) override { inner_.Destroy(index); }
    bool Exists(int index) const override { return inner_.Exists(index); }
    void Connect(int index, const std::string& host, int port) override {
        inner_.Connect(index, host, port);
    }
    void Send(int index, const std::string& bytes) override {
        if (inner_.IsConnected(index) && bytes.size() > 26 &&
            oscar::SnacKey(bytes.substr(6)) == "000E0005") {
            std::string data = bytes.substr(26);
            oscar::TLVList tlvs;
            oscar::ParseTLVs(data, tlvs);
            std::string block = oscar::FindTLV(tlvs, oscar::HexToBytes("0005")).value_or("");
            oscar::TLVList parts;
            oscar::ParseTLVs(block, parts);
            sent.push_back(oscar::FindTLV(parts, oscar::HexToBytes("0001")).value_or(""));
        }
        inner_.Send(index, bytes);
    }
    std::string ReadAll(int index) override { return inner_.ReadAll(index); }
    void Close(int index) override { inner_.Close(index); }
    bool IsConnected(int index) const override { return inner_.IsConnected(index); }
    std::string Tag(int index) const override { return inner_.Tag(index); }
    void SetTag(int index, const std::string& tag) override { inner_.SetTag(index, tag); }

    std::deque<std::string> sent;  // waiting to be seen in the room

  private:
    QtSocketLayer inner_;
};

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

    QProcess server;
    // The server dies with this run, even when the run is killed.
    server.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    server.setProgram(QStringLiteral(LOCAL_SERVER_PROGRAM));
    server.setArguments({"--port", "0", "--topics", topics, "--report", "--seed", "7"});

    RecordingSockets sockets;
    QElapsedTimer clock;
    clock.start();
    int port = 0;
    std::size_t received = 0, lost = 0, unexpected = 0;
    std::vector<Outage> outages;
    const std::string banner = game::JoinBanner();
    QByteArray pending;
    QObject::connect(&server, &QProcess::readyReadStandardOutput, [&] {
        pending += server.readAllStandardOutput();
        for (int end; (end = pending.indexOf('\n')) >= 0;) {
            const QByteArray line = pending.left(end);
            pending.remove(0, end + 1);
            if (line.startsWith("Local OSCAR server on 127.0.0.1:")) {
                port = line.mid(line.lastIndexOf(':') + 1).toInt();
                continue;
            }
            if (!line.startsWith("BOT ")) continue;
            const std::string text = oscar::HexToBytes(line.mid(4).toStdString());
            ++received;
            auto at = std::find(sockets.sent.begin(), sockets.sent.end(), text);
            if (at == sockets.sent.end()) {
                ++unexpected;  // said twice, or never sent
                continue;
            }
            for (auto gone = sockets.sent.begin(); gone != at; ++gone)
                std::cout << "  lost at " << clock.elapsed() / 1000 << " s: " << *gone << "\n";
            lost += static_cast<std::size_t>(at - sockets.sent.begin());
            sockets.sent.erase(sockets.sent.begin(), at + 1);
            if (!outages.empty()) {
                Outage& last = outages.back();
                if (last.firstLineMs < 0) last.firstLineMs = clock.elapsed();
                if (text.find(banner) == std::string::npos) ++last.gameLinesAfter;
            }
        }
    });
    server.start();
    if (!testing_support::WaitFor([&] { return port != 0; }, 10000)) {
        std::cerr << "The server did not start.\n";
        return 1;
    }

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
    bot.session.cmdSignOn_Click({"Fault Bot", "faultpass", "127.0.0.1", std::to_string(port)});
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
            server.write("drop Fault Bot\n");
            return;
        }
        // Stopped, the server signs everyone off first; killed, it just goes.
        if (kind == "sign-off frame") {
            server.terminate();
        } else {
            server.kill();
        }
        server.waitForFinished(5000);
        pending.clear();
        server.setArguments(
            {"--port", QString::number(port), "--topics", topics, "--report", "--seed", "7"});
        server.start();
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
    server.terminate();
    server.waitForFinished(5000);

    std::vector<qint64> backMs;
    int recovered = 0;
    std::cout << "Fault run: " << seconds << " s, an outage every " << every << " s\n";
    for (const Outage& o : outages) {
        const qint64 back = o.firstLineMs < 0 ? -1 : o.firstLineMs - o.startMs;
        std::cout << "  " << o.kind << " at " << o.startMs / 1000 << " s: first line back after "
                  << back << " ms, " << o.gameLinesAfter << " game lines after\n";
        if (back >= 0 && o.gameLinesAfter > 0) {
            ++recovered;
            backMs.push_back(back);
        }
    }
    std::sort(backMs.begin(), backMs.end());
    const qint64 median = backMs.empty() ? 0 : backMs[backMs.size() / 2];
    const qint64 worst = backMs.empty() ? 0 : backMs.back();
    int boxes = 0;
    for (const auto& m : dialogs.messages)
        boxes += m.text.find("lost") != std::string::npos;
    std::cout << "Outages: " << outages.size()
              << ", recovered with the game going on: " << recovered << "\n"
              << "Outage to the bot's first line back: median " << median << " ms, worst " << worst
              << " ms\n"
              << "Lines received in the room: " << received << "; lost: " << lost
              << ", said twice or unknown: " << unexpected
              << ", never seen: " << sockets.sent.size() << "\n"
              << "Message boxes about a lost connection: " << boxes << "\n";
    const bool passed = !outages.empty() && recovered == static_cast<int>(outages.size()) &&
                        lost == 0 && unexpected == 0 && sockets.sent.empty() && boxes == 0;
    std::cout << (passed ? "1 passed, 0 failed" : "0 passed, 1 failed") << "\n";
    return passed ? 0 : 1;
}
