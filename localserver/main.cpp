// The loopback OSCAR server as a program: sign the bot on locally, without
// an account. Any screen name signs on with any password. The room
// "Word Games" on exchange 4 holds scripted players who solve the bot's
// puzzles from the word lists in topics/.
//
//   oscar-test-server [--port N] [--topics DIR] [--seed S]
//                     [--chatter N] [--chatter-ms MS] [--report]
//                     [--rate-divisor N]
//
// Commands on standard input, one per line, for fault tests: "drop NAME"
// resets all of NAME's connections, "signoff NAME" sends NAME the sign-off
// frame of a second sign-on elsewhere, "who ROOM" prints "WHO ROOM: a,b,...".
//
// --chatter adds N players who make small talk every MS milliseconds on
// average; --report prints every line the bot says (as hex) and the bot's
// answer times, for the soak run, instead of the room's transcript.
// --rate-divisor divides every rate level (a flood that takes minutes on a
// real server takes seconds here; the average works the same).
#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTextStream>
#include <QTimer>

#include <sys/socket.h>
#include <unistd.h>

#include <csignal>

#include "localserver/oscar_test_server.h"
#include "localserver/scripted_game.h"
#include "oscar/encoding.h"

namespace {

// A signal only writes a byte; the event loop then stops the server as a
// real one stops, so that clients see the sign-off frame.
int signalPipe[2] = {-1, -1};

void OnStopSignal(int) {
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(signalPipe[1], &byte, 1);
}

QString Option(const QStringList& args, const QString& name, const QString& fallback) {
    const auto at = args.indexOf(name);
    return at >= 0 && at + 1 < args.size() ? args[at + 1] : fallback;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);

    const QStringList args = app.arguments();
    const auto port = static_cast<quint16>(Option(args, "--port", "5190").toUInt());
    const std::string topics = Option(args, "--topics", "topics").toStdString();
    const int chatter = Option(args, "--chatter", "0").toInt();
    const int chatterMs = Option(args, "--chatter-ms", "1000").toInt();
    const quint64 seed = Option(args, "--seed", "1").toULongLong();
    const bool report = args.contains("--report");

    testserver::OscarTestServer server;
    server.SetOpenSignOn(true);
    server.SetKeepLines(false);
    server.SetRateDivisor(Option(args, "--rate-divisor", "1").toInt());
    QTextStream out(stdout);
    if (!server.Start(port)) {
        out << "Cannot listen on 127.0.0.1:" << port << " (is another server running?)\n";
        return 1;
    }
    const std::vector<std::string> entries = testserver::LoadEntries(topics);
    testserver::ScriptedGame game(server, "Word Games", entries, seed);
    game.AddPlayer({"Ann Agram", 400, 1500, 0, 0, 0, 0});
    game.AddPlayer({"Bob Scramble", 1500, 4000, 40, 0, 0, 0});
    game.AddPlayer({"Cat Nap", 3000, 6000, 0, 60, 0, 0});
    game.AddPlayer({"Dee Hinter", 2000, 5000, 20, 0, 50, 40});
    for (int i = 1; i <= chatter; ++i)
        game.AddChatter("Chatter " + std::to_string(i), chatterMs);

    std::size_t reported = 0;
    server.AddLineListener([&](const testserver::RelayedLine& line) {
        const bool scripted = line.sender == "OnlineHost" || game.IsScripted(line.sender);
        if (report) {
            if (!scripted)
                out << "BOT " << QString::fromStdString(oscar::BytesToHex(line.text)) << "\n";
            for (; reported < game.Latencies().size(); ++reported) {
                out << "LATENCY_US " << game.Latencies()[reported] << "\n";
            }
        } else {
            out << "[" << QString::fromStdString(line.room) << "] "
                << QString::fromLatin1(line.sender.c_str()) << ": "
                << QString::fromLatin1(line.text.c_str()) << "\n";
        }
        out.flush();
    });
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) == 0) {
        auto* notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, &app);
        QObject::connect(notifier, &QSocketNotifier::activated, &app, [&] {
            notifier->setEnabled(false);
            server.Shutdown();
            // The sign-off frames go out before the program ends.
            QTimer::singleShot(200, &app, &QCoreApplication::quit);
        });
        std::signal(SIGTERM, OnStopSignal);
        std::signal(SIGINT, OnStopSignal);
    }
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    std::string pendingInput;
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        char buffer[512];
        const auto got = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (got <= 0) {
            input.setEnabled(false);  // no more commands; keep serving
            return;
        }
        pendingInput.append(buffer, static_cast<std::size_t>(got));
        for (auto end = pendingInput.find('\n'); end != std::string::npos;
             end = pendingInput.find('\n')) {
            const std::string command = pendingInput.substr(0, end);
            pendingInput.erase(0, end + 1);
            const auto space = command.find(' ');
            const std::string verb = command.substr(0, space);
            const std::string name = space == std::string::npos ? "" : command.substr(space + 1);
            if (verb == "drop") {
                for (auto role :
                     {testserver::Role::Chat, testserver::Role::ChatNav, testserver::Role::Bos}) {
                    server.CloseConnection(name, role);
                }
            } else if (verb == "signoff") {
                server.SignOffSession(name);
            } else if (verb == "who") {
                std::string names;
                for (const std::string& who : server.Occupants(name))
                    names += (names.empty() ? "" : ",") + who;
                out << "WHO " << QString::fromStdString(name) << ": "
                    << QString::fromStdString(names) << "\n";
                out.flush();
            }
        }
    });

    out << "Local OSCAR server on 127.0.0.1:" << server.Port() << "\n"
        << "Sign on with any screen name and password, server 127.0.0.1, port " << server.Port()
        << ";\nthen join the room \"Word Games\" on exchange 4 (" << entries.size()
        << " words known to its players). Ctrl+C stops the server.\n";
    out.flush();
    return app.exec();
}
