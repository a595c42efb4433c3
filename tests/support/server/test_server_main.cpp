// The loopback OSCAR server as a program: sign the bot on locally, without
// an account. Any screen name signs on with any password; the room
// "Word Games" on exchange 4 has two players in it already.
#include <QCoreApplication>
#include <QTextStream>

#include "support/server/oscar_test_server.h"

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    quint16 port = 5190;
    const QStringList args = app.arguments();
    const int at = static_cast<int>(args.indexOf("--port"));
    if (at >= 0 && at + 1 < args.size()) port = static_cast<quint16>(args[at + 1].toUInt());

    testserver::OscarTestServer server;
    server.SetOpenSignOn(true);
    QTextStream out(stdout);
    if (!server.Start(port)) {
        out << "Cannot listen on 127.0.0.1:" << port << " (is another server running?)\n";
        return 1;
    }
    server.AddScriptedPlayer("Word Games", "Ann Agram");
    server.AddScriptedPlayer("Word Games", "Bob Scramble");
    server.onLine = [&out](const testserver::RelayedLine& line) {
        out << "[" << QString::fromStdString(line.room) << "] "
            << QString::fromLatin1(line.sender.c_str()) << ": "
            << QString::fromLatin1(line.text.c_str()) << "\n";
        out.flush();
    };
    out << "Local OSCAR server on 127.0.0.1:" << server.Port() << "\n"
        << "Sign on with any screen name and password, server 127.0.0.1, port " << server.Port()
        << ";\nthen join the room \"Word Games\" on exchange 4. Ctrl+C stops the server.\n";
    out.flush();
    return app.exec();
}
