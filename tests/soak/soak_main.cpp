// The soak run: the bot's real window (offscreen), sockets and timers play
// against the loopback server in a separate process for a bounded time,
// with ten chatty players and four who solve the puzzles. At the end it
// checks that every line the bot sent reached the room, in order, that
// nothing crashed, and that memory did not grow; and it reports the figures,
// among them the time from a player's correct answer to the bot's credit.
//
//   soak [--seconds N] [--players N] [--chatter-ms MS] [--topics DIR]
//        [--screenshot FILE]
#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <deque>
#include <fstream>
#include <iostream>

#include "app/child_process.h"
#include "app/qt_bot_timers.h"
#include "app/qt_socket_layer.h"
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

long ResidentKilobytes() {
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').first().toLong();
    }
    return 0;
}

// The sockets of the program, noting the text of every chat line written.
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

qint64 Percentile(std::vector<qint64> values, double p) {
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(p * static_cast<double>(values.size() - 1))];
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    const int seconds = Option(args, "--seconds", "1200").toInt();
    const QString players = Option(args, "--players", "10");
    const QString chatterMs = Option(args, "--chatter-ms", "100");
    const QString topics = QDir(Option(args, "--topics", "topics")).absolutePath();

    // The server in a process of its own, so that its memory is not ours.
    QProcess server;
    server.setProgram(QStringLiteral(LOCAL_SERVER_PROGRAM));
    // Killed by a timeout or a crash, the soak takes its server with it.
    const int soakPid = static_cast<int>(QCoreApplication::applicationPid());
    server.setChildProcessModifier([soakPid] { EndWithParent(soakPid); });
    server.setArguments({"--port", "0", "--topics", topics, "--chatter", players, "--chatter-ms",
                         chatterMs, "--report", "--seed", "2026"});
    RecordingSockets sockets;
    int port = 0;
    std::size_t received = 0, mismatched = 0;
    std::vector<qint64> latencies;
    QByteArray pending;
    QObject::connect(&server, &QProcess::readyReadStandardOutput, [&] {
        pending += server.readAllStandardOutput();
        int end;
        while ((end = pending.indexOf('\n')) >= 0) {
            const QByteArray line = pending.left(end);
            pending.remove(0, end + 1);
            if (line.startsWith("Local OSCAR server on 127.0.0.1:")) {
                port = line.mid(line.lastIndexOf(':') + 1).toInt();
            } else if (line.startsWith("BOT ")) {
                const std::string text = oscar::HexToBytes(line.mid(4).toStdString());
                ++received;
                if (sockets.sent.empty() || sockets.sent.front() != text) {
                    ++mismatched;
                } else {
                    sockets.sent.pop_front();
                }
            } else if (line.startsWith("LATENCY_US ")) {
                latencies.push_back(line.mid(11).toLongLong());
            }
        }
    });
    server.start();
    if (!testing_support::WaitFor([&] { return port != 0; }, 10000)) {
        std::cerr << "The server did not start: " << server.errorString().toStdString() << "\n";
        return 1;
    }

    testing_support::TempFolder folder;
    {
        std::ofstream settings(folder.File("settings"), std::ios::binary);
        settings
            << "sn:Soak Bot\r\nserver:127.0.0.1\r\nport:" << port
            << "\r\nchat:Word Games\r\nex:4\r\nmsgdelay:1\r\nidle:5\r\nscore:10\r\nop:anngram\r\n";
        for (const QString& name :
             QDir(topics).entryList({"*.csv", "*.txt"}, QDir::Files, QDir::Name)) {
            settings << "topic:" << name.section('.', 0, 0).toStdString() << ":"
                     << QDir(topics).filePath(name).toStdString() << "\r\n";
        }
    }
    testing_support::FakeDialogs dialogs;
    QtBotTimers timers;
    session::Bot bot(timers.Platform(sockets, dialogs, folder.Path()));
    timers.Attach(bot, false);
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
    // An event loop of its own: the test helper's wait sleeps between its
    // rounds, which would add to the times measured.
    QEventLoop play;
    QTimer::singleShot(seconds * 1000, &play, &QEventLoop::quit);
    const QString screenshot = Option(args, "--screenshot", "");
    if (!screenshot.isEmpty()) {
        // The console in the middle of the run, as the operator sees it.
        QTimer::singleShot(seconds * 500, [&] {
            window.chkTab[9]->click();
            window.grab().save(screenshot);
        });
    }
    play.exec();

    QTest::mouseClick(window.mainGame->cmdAutoSendOff, Qt::LeftButton);
    const long endKb = ResidentKilobytes();
    testing_support::WaitFor([&] { return sockets.sent.empty(); }, 5000);
    const bool serverAlive = server.state() == QProcess::Running;
    server.terminate();
    server.waitForFinished(5000);
    QCoreApplication::processEvents();

    std::cout << "Soak: " << seconds << " s, " << players.toStdString() << " chatty players every "
              << chatterMs.toStdString() << " ms on average, 4 solving players\n"
              << "Lines the bot sent that reached the room in order: " << received - mismatched
              << " of " << received + sockets.sent.size() << "\n"
              << "Lines out of order or altered: " << mismatched
              << ", lines never seen: " << sockets.sent.size() << "\n"
              << "Console lines kept in the transcript now: "
              << std::count(bot.console.Text().begin(), bot.console.Text().end(), '\n') << "\n"
              << "Memory (RSS): " << baseKb << " kB after " << baseAfter << " s, " << endKb
              << " kB at the end (" << (endKb - baseKb) << " kB)\n"
              << "Correct answer to credit line, over loopback: " << latencies.size()
              << " answers, median " << Percentile(latencies, 0.5) << " us, 99th percentile "
              << Percentile(latencies, 0.99) << " us\n";
    const bool passed = serverAlive && mismatched == 0 && sockets.sent.empty() && received > 0 &&
                        !latencies.empty() && endKb - baseKb < 8 * 1024;
    std::cout << (passed ? "1 passed, 0 failed" : "0 passed, 1 failed") << "\n";
    return passed ? 0 : 1;
}
