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
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <iostream>

#include "app/qt_bot_timers.h"
#include "panel/frm_main.h"
#include "session/bot.h"
#include "support/bot_fixture.h"
#include "support/fake_dialogs.h"
#include "support/server_process.h"

using testing_support::Option;
using testing_support::Percentile;

namespace {

long ResidentKilobytes() {
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').first().toLong();
    }
    return 0;
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
    testing_support::RecordingSockets sockets;
    testing_support::ServerProcess server(sockets);
    std::vector<qint64> latencies;
    server.onLine = [&](const QByteArray& line) {
        if (line.startsWith("LATENCY_US ")) latencies.push_back(line.mid(11).toLongLong());
    };
    server.Start(
        {"--topics", topics, "--chatter", players, "--chatter-ms", chatterMs, "--seed", "2026"});
    if (!server.Listening()) return 1;

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
    const bool serverAlive = server.process.state() == QProcess::Running;
    server.Stop();
    QCoreApplication::processEvents();

    std::cout << "Soak: " << seconds << " s, " << players.toStdString() << " chatty players every "
              << chatterMs.toStdString() << " ms on average, 4 solving players\n"
              << sockets.Summary() << "\n"
              << "Console lines kept in the transcript now: "
              << std::count(bot.console.Text().begin(), bot.console.Text().end(), '\n') << "\n"
              << "Memory (RSS): " << baseKb << " kB after " << baseAfter << " s, " << endKb
              << " kB at the end (" << (endKb - baseKb) << " kB)\n"
              << "Correct answer to credit line, over loopback: " << latencies.size()
              << " answers, median " << Percentile(latencies, 0.5) << " us, 99th percentile "
              << Percentile(latencies, 0.99) << " us\n";
    const bool passed =
        serverAlive && sockets.AllArrived() && !latencies.empty() && endKb - baseKb < 8 * 1024;
    std::cout << (passed ? "1 passed, 0 failed" : "0 passed, 1 failed") << "\n";
    return passed ? 0 : 1;
}
