// The unattended run: the bot's real window (offscreen), sockets and timers
// play against the local server in a process of its own for a bounded time,
// with chatty players and four who solve the puzzles. With --every S the
// server also cuts the bot off every S seconds, in turn by resetting its
// connections, by stopping (its sign-off frame: the server is restarting)
// and by being killed, each time starting again on the same port; the bot
// must come back to the room with the game going on each time.
// At the end it checks that every line the bot sent reached the room once
// and in order (but for one written within a second of an outage: cut off in
// flight, as it would be for any client), that nothing crashed and that
// memory did not grow; it reports the time from a correct answer to the
// bot's credit and from each outage to the bot's first line back.
//
//   soak [--seconds N] [--every S] [--players N] [--chatter-ms MS]
//        [--topics DIR]
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <cstdlib>
#include <deque>
#include <iostream>

#include "app/child_process.h"
#include "app/qt_bot_timers.h"
#include "app/qt_socket_layer.h"
#include "game/style.h"
#include "oscar/encoding.h"
#include "panel/frm_main.h"
#include "session/bot.h"
#include "support/bot_fixture.h"
#include "support/fake_dialogs.h"
#include "support/qt_wait.h"

namespace {

QString Option(const QStringList& args, const QString& name, const QString& fallback) {
    const auto at = args.indexOf(name);
    return at >= 0 && at + 1 < args.size() ? args[at + 1] : fallback;
}

qint64 Percentile(std::vector<qint64> values, double p) {
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(p * static_cast<double>(values.size() - 1))];
}

long ResidentKilobytes() {
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').first().toLong();
    }
    return 0;
}

// A chat line the bot wrote, and when, on the run's clock.
struct Line {
    std::string text;
    qint64 sentMs;
};

// The program's sockets, noting the text of every chat line written. Each
// line the room receives must be the oldest one still waiting: the lines
// before it never arrived or arrive out of order (lost); a line not waiting
// at all was said twice, altered or never sent (unexpected).
class RecordingSockets : public QtSocketLayer {
  public:
    RecordingSockets() { clock.start(); }
    void Send(int index, const std::string& bytes) override {
        if (IsConnected(index) && bytes.size() > 26 &&
            oscar::SnacKey(bytes.substr(6)) == "000E0005") {
            std::string data = bytes.substr(26), block;  // parsing consumes them
            oscar::TLVList tlvs, parts;
            oscar::ParseTLVs(data, tlvs);
            block = oscar::FindTLV(tlvs, oscar::HexToBytes("0005")).value_or("");
            oscar::ParseTLVs(block, parts);
            sent.push_back(
                {oscar::FindTLV(parts, oscar::HexToBytes("0001")).value_or(""), clock.elapsed()});
        }
        QtSocketLayer::Send(index, bytes);
    }
    bool Received(const std::string& text) {
        ++received;
        const auto at = std::find_if(sent.begin(), sent.end(),
                                     [&](const Line& line) { return line.text == text; });
        if (at == sent.end()) return ++unexpected, false;
        lost.insert(lost.end(), sent.begin(), at);
        sent.erase(sent.begin(), at + 1);
        return true;
    }

    QElapsedTimer clock;    // the run's
    std::deque<Line> sent;  // waiting to be seen in the room
    std::vector<Line> lost;
    std::size_t received = 0, unexpected = 0;
};

struct Outage {
    const char* kind;
    qint64 startMs = 0;
    qint64 firstLineMs = -1;  // the bot's first line in the room after it
    int gameLinesAfter = 0;   // lines other than the join banner since then
};

// The local server program, ended with this one even when this one is killed.
class ServerProcess {
  public:
    ServerProcess() {
        process.setProgram(QStringLiteral(LOCAL_SERVER_PROGRAM));
        const int parent = static_cast<int>(QCoreApplication::applicationPid());
        process.setChildProcessModifier([parent] { EndWithParent(parent); });
        QObject::connect(&process, &QProcess::readyReadStandardOutput, [this] { ReadLines(); });
    }
    bool Start(const QStringList& args, int onPort = 0) {
        pending_.clear();
        process.setArguments(QStringList{"--port", QString::number(onPort), "--report"} + args);
        process.start();
        if (testing_support::WaitFor([&] { return port != 0; }, 10000)) return true;
        std::cerr << "The server did not start: " << process.errorString().toStdString() << "\n";
        return false;
    }
    // Terminated, the server signs everyone off first; killed, it just goes.
    void Stop(bool abruptly = false) {
        if (process.state() == QProcess::NotRunning) return;
        abruptly ? process.kill() : process.terminate();
        process.waitForFinished(5000);
    }

    QProcess process;
    int port = 0;
    std::function<void(const std::string&)> onBotLine;  // each line from the bot, as expected
    std::vector<qint64> latencies;                      // answer to credit, microseconds
    RecordingSockets sockets;

  private:
    void ReadLines() {
        pending_ += process.readAllStandardOutput();
        for (int end; (end = pending_.indexOf('\n')) >= 0;) {
            const QByteArray line = pending_.left(end);
            pending_.remove(0, end + 1);
            if (line.startsWith("Local OSCAR server on 127.0.0.1:")) {
                port = line.mid(line.lastIndexOf(':') + 1).toInt();
            } else if (line.startsWith("BOT ")) {
                const std::string text = oscar::HexToBytes(line.mid(4).toStdString());
                if (sockets.Received(text) && onBotLine) onBotLine(text);
            } else if (line.startsWith("LATENCY_US ")) {
                latencies.push_back(line.mid(11).toLongLong());
            }
        }
    }

    QByteArray pending_;
};

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    const int seconds = Option(args, "--seconds", "1200").toInt();
    const int every = Option(args, "--every", "0").toInt();
    // A busy server reads its sockets later, which makes a line cut off in
    // flight by an outage likelier: the outage runs are quiet unless asked.
    const QString players = Option(args, "--players", every > 0 ? "0" : "10");
    const QString chatterMs = Option(args, "--chatter-ms", "100");
    const QString topics = QDir(Option(args, "--topics", "topics")).absolutePath();

    // The server in a process of its own, so that its memory is not ours.
    ServerProcess server;
    const QElapsedTimer& clock = server.sockets.clock;
    std::vector<Outage> outages;
    server.onBotLine = [&, banner = game::JoinBanner()](const std::string& text) {
        if (outages.empty()) return;
        Outage& last = outages.back();
        if (last.firstLineMs < 0) last.firstLineMs = clock.elapsed();
        if (text.find(banner) == std::string::npos) ++last.gameLinesAfter;
    };
    const QStringList serverArgs = {"--topics",     topics,    "--chatter", players,
                                    "--chatter-ms", chatterMs, "--seed",    "2026"};
    if (!server.Start(serverArgs)) return 1;

    testing_support::TempFolder folder;
    std::string settings =
        "sn:Soak Bot\r\nserver:127.0.0.1\r\nport:" + std::to_string(server.port) +
        "\r\nchat:Word Games\r\nex:4\r\nmsgdelay:1\r\nidle:5\r\nscore:10\r\nop:anngram\r\n";
    for (const QString& name : QDir(topics).entryList({"*.csv", "*.txt"}, QDir::Files, QDir::Name))
        settings += "topic:" + name.section('.', 0, 0).toStdString() + ":" +
                    QDir(topics).filePath(name).toStdString() + "\r\n";
    folder.Write("settings", settings);
    testing_support::FakeDialogs dialogs;
    QtBotTimers timers;
    session::Bot bot(timers.Platform(server.sockets, dialogs, folder.Path()));
    timers.Attach(bot, true);
    FrmMain window(bot);
    window.show();

    QTest::mouseClick(window.other->cmdLoadSettings, Qt::LeftButton);
    window.connection->txtPW->setText("soakpass");
    QTest::mouseClick(window.connection->cmdSignOn, Qt::LeftButton);
    bool ok = testing_support::WaitFor([&] { return bot.game.SignedOn; }, 10000);
    QTest::mouseClick(window.chats->cmdJoin, Qt::LeftButton);
    ok = ok && testing_support::WaitFor([&] { return !bot.client.Chat().empty(); }, 10000);
    for (int row = 0; row < window.topics->lstData->model()->rowCount(); ++row) {
        window.topics->lstData->setCurrentIndex(window.topics->lstData->model()->index(row, 0));
        QTest::mouseClick(window.topics->cmdSendToList, Qt::LeftButton);
    }
    QTest::mouseClick(window.scrambleList->cmdRandomize, Qt::LeftButton);
    QTest::mouseClick(window.mainGame->cmdAutoSendOn, Qt::LeftButton);
    if (!ok || !bot.game.GameOn) {
        std::cerr << "The game did not start.\n";
        return 1;
    }

    // Memory after the first minute (or a quarter of a short run) is the base.
    const int baseAfter = std::min(60, seconds / 4);
    long baseKb = 0;
    QTimer::singleShot(baseAfter * 1000, [&] { baseKb = ResidentKilobytes(); });
    const char* const kinds[] = {"connection reset", "sign-off frame", "server killed"};
    QTimer faults;
    QObject::connect(&faults, &QTimer::timeout, [&] {
        const std::size_t kind = outages.size() % 3;  // in turn
        outages.push_back({kinds[kind], clock.elapsed()});
        if (kind == 0) {
            server.process.write("drop Soak Bot\n");
        } else {
            server.Stop(kind == 2);
            server.Start(serverArgs, server.port);
        }
    });
    if (every > 0) faults.start(every * 1000);
    // An event loop of its own: the test helper's wait sleeps between its
    // rounds, which would add to the times measured.
    QEventLoop play;
    QTimer::singleShot(seconds * 1000, &play, &QEventLoop::quit);
    play.exec();
    faults.stop();

    // The last outage gets its time to come back, then play stops.
    testing_support::WaitFor([&] { return outages.empty() || outages.back().gameLinesAfter > 0; },
                             60000);
    const long endKb = ResidentKilobytes();
    QTest::mouseClick(window.mainGame->cmdAutoSendOff, Qt::LeftButton);
    testing_support::WaitFor([&] { return server.sockets.sent.empty(); }, 5000);
    const bool serverAlive = server.process.state() == QProcess::Running;
    server.Stop();
    QCoreApplication::processEvents();

    const RecordingSockets& lines = server.sockets;
    std::cout << "Soak: " << seconds << " s, " << players.toStdString() << " chatty players every "
              << chatterMs.toStdString() << " ms on average, 4 solving players\n";
    std::vector<qint64> backMs;  // of the outages the bot and the game came back from
    for (const Outage& o : outages) {
        const qint64 back = o.firstLineMs < 0 ? -1 : o.firstLineMs - o.startMs;
        std::cout << "  " << o.kind << " at " << o.startMs / 1000 << " s: first line back after "
                  << back << " ms, " << o.gameLinesAfter << " game lines after\n";
        if (back >= 0 && o.gameLinesAfter > 0) backMs.push_back(back);
    }
    // A line written as the server cut the connection is lost to any client:
    // only a line lost away from every outage counts against the bot.
    std::size_t lostAway = 0;
    for (const Line& line : lines.lost) {
        const bool inFlight = std::any_of(outages.begin(), outages.end(), [&](const Outage& o) {
            return std::abs(o.startMs - line.sentMs) <= 1000;
        });
        lostAway += !inFlight;
        std::cout << "  lost" << (inFlight ? " in flight at an outage" : "") << ", sent at "
                  << line.sentMs << " ms: " << line.text << "\n";
    }
    int boxes = 0;  // about a lost connection: the bot deals with those itself
    for (const std::string& text : dialogs.Texts(true)) {
        std::cout << "  message box: " << text << "\n";
        boxes += text.find("lost") != std::string::npos;
    }
    std::cout << "Outages: " << outages.size()
              << ", recovered with the game going on: " << backMs.size() << ", median "
              << Percentile(backMs, 0.5) << " ms, worst " << Percentile(backMs, 1.0)
              << " ms to the bot's first line back\n"
              << "Lines received in the room: " << lines.received << "; lost: " << lines.lost.size()
              << ", said twice, altered or unknown: " << lines.unexpected
              << ", never seen: " << lines.sent.size() << "\n"
              << "Message boxes about a lost connection: " << boxes << "\n"
              << "Console lines kept in the transcript now: "
              << std::count(bot.console.Text().begin(), bot.console.Text().end(), '\n') << "\n"
              << "Memory (RSS): " << baseKb << " kB after " << baseAfter << " s, " << endKb
              << " kB at the end (" << (endKb - baseKb) << " kB)\n"
              << "Correct answer to credit line, over loopback: " << server.latencies.size()
              << " answers, median " << Percentile(server.latencies, 0.5) << " us, 99th percentile "
              << Percentile(server.latencies, 0.99) << " us\n";
    const bool passed = serverAlive && lines.received > 0 && lostAway == 0 &&
                        lines.unexpected == 0 && lines.sent.empty() &&
                        backMs.size() == outages.size() && boxes == 0 &&
                        !server.latencies.empty() && endKb - baseKb < 8 * 1024;
    std::cout << (passed ? "1 passed, 0 failed" : "0 passed, 1 failed") << "\n";
    return passed ? 0 : 1;
}
