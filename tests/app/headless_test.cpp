// The program without any display, as a service runs it: the real program
// and the local server as child processes on 127.0.0.1.
#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include "app/child_process.h"
#include "support/qt_wait.h"

namespace {

using testing_support::WaitFor;

// Children die with the test, even when it is killed; `unset` names variables
// taken out of their environment.
void StartChild(QProcess& process, const QString& program, const QStringList& args,
                std::initializer_list<const char*> unset = {}) {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* name : unset)
        env.remove(name);
    process.setProcessEnvironment(env);
    const int parent = static_cast<int>(QCoreApplication::applicationPid());
    process.setChildProcessModifier([parent] { EndWithParent(parent); });
    process.start(program, args);
}

TEST(Headless, PlaysAGameToAWinnerWithoutADisplayAndSignsOffOnSigterm) {
    QProcess server;
    server.setProcessChannelMode(QProcess::SeparateChannels);
    StartChild(server, LOCAL_SERVER_PROGRAM, {"--port", "0", "--topics", TOPICS_DIR});
    QByteArray transcript;
    QObject::connect(&server, &QProcess::readyReadStandardOutput,
                     [&] { transcript += server.readAllStandardOutput(); });
    ASSERT_TRUE(WaitFor([&] { return transcript.contains("Local OSCAR server on"); }, 10000));
    const int at = transcript.indexOf("127.0.0.1:") + 10;
    const QByteArray port = transcript.mid(at, transcript.indexOf('\n', at) - at);

    QTemporaryDir folder;
    const auto write = [&](const char* name, const QByteArray& bytes) {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    };
    ASSERT_TRUE(write("settings", "sn:Scramble Bot\r\nserver:127.0.0.1\r\nport:" + port +
                                      "\r\nchat:Word Games\r\nex:4\r\nmsgdelay:1\r\nscore:2\r\n"
                                      "idle:5\r\ntopic:animals:" TOPICS_DIR "/animals.csv\r\n"));
    ASSERT_TRUE(write("password", "secret1\n"));

    QProcess bot;
    StartChild(bot, SCRAMBLER_PROGRAM,
               {"--headless", "--settings", folder.filePath("settings"), "--password-file",
                folder.filePath("password")},
               {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"});

    EXPECT_TRUE(WaitFor([&] { return transcript.contains("is the winner with 2 points!"); }, 60000))
        << transcript.toStdString() << bot.readAllStandardError().toStdString();

    bot.terminate();  // SIGTERM
    ASSERT_TRUE(bot.waitForFinished(10000));
    EXPECT_EQ(std::pair(bot.exitStatus(), bot.exitCode()), std::pair(QProcess::NormalExit, 0));
    const QByteArray log = bot.readAllStandardError();
    // Signed off through the session, not merely cut off by the exit, and
    // the room saw the bot go.
    EXPECT_TRUE(log.contains("SIGTERM: signing off.") && log.contains("Status: Offline."))
        << log.toStdString();
    // The game is remembered beside the settings file.
    EXPECT_TRUE(QFileInfo::exists(folder.filePath("history.sqlite")));
    // The room no longer holds the bot.
    transcript.clear();
    EXPECT_TRUE(WaitFor([&] {
        server.write("who Word Games\n");
        WaitFor([&] { return transcript.contains("WHO"); }, 1000);
        const bool gone = transcript.contains("WHO") && !transcript.contains("Scramble Bot\n");
        transcript.clear();
        return gone;
    }));
    server.terminate();
    server.waitForFinished(5000);
}

}  // namespace
