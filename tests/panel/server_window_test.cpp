// The window against the loopback OSCAR server, driven through its controls:
// a session from sign-on to sign-off, and what the window shows when the
// server ends the session or a sign-on or join cannot go on.
#include <QTcpServer>

#include "app/loopback_user.h"
#include "panel/server_window.h"

namespace {

using testing_support::ServerWindow;
using testing_support::WaitFor;

TEST_F(ServerWindow, SignOnJoinTalkLeaveAndSignOff) {
    server.AddScriptedPlayer("Word Games", "Bob Scramble");
    ASSERT_TRUE(SignOn());
    ASSERT_TRUE(Join());
    ASSERT_TRUE(WaitFor([&] { return BotLines() == 1; }));  // the banner
    EXPECT_TRUE(Console().contains("OnlineHost: Ann Agram has entered the room."));
    EXPECT_EQ(window.console->lblPeopleCount->text(), "3 People Here");

    server.PlayerSays("Word Games", "Ann Agram", "<b>hello</b> there");
    ASSERT_TRUE(WaitFor([&] { return Console().contains("Ann Agram: hello there"); }));
    // The console's line goes to the room; Enter empties it.
    window.console->txtSend->setText("hi all");
    QTest::keyClick(window.console->txtSend, Qt::Key_Return);
    EXPECT_TRUE(window.console->txtSend->text().isEmpty());
    ASSERT_TRUE(WaitFor([&] { return server.Lines().back().text.ends_with(">hi all"); }));
    server.RemoveScriptedPlayer("Word Games", "Bob Scramble");
    ASSERT_TRUE(WaitFor([&] { return People() == 2; }));

    QTest::mouseClick(window.chats->cmdLeave, Qt::LeftButton);
    ASSERT_TRUE(WaitForRoomStatus("Left chat."));
    EXPECT_EQ(People(), 0);
    QTest::mouseClick(window.connection->cmdSignOff, Qt::LeftButton);
    EXPECT_EQ(std::tuple(Info(), bot.game.SignedOn, dialogs.messages.size()),
              std::tuple("Offline.", false, 0u));
}

TEST_F(ServerWindow, PanelsFollowAnUnansweredSignOnJoinsASignOnElsewhereAndSignOff) {
    // A sign-on with no answer says why, with no box, and may be retried.
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost, 0));
    ClickSignOn(silent.serverPort());
    ASSERT_TRUE(WaitFor([&] { return silent.hasPendingConnections(); }));
    tmrDeadline.Tick(oscar::TolSock::kStepSeconds);
    EXPECT_TRUE(Info().startsWith("Sign-on failed at \"Connecting to Auth server...\": no answer"))
        << Info().toStdString();
    ASSERT_TRUE(SignOn());

    // A second join while one is under way is refused; the first gets in.
    ClickJoin("Word Games");
    ClickJoin("Word Games");
    EXPECT_EQ(MessageTexts(), std::vector<std::string>{"A join is already under way: wait until "
                                                       "it has joined or failed."});
    ASSERT_TRUE(WaitForRoomStatus("Joined 'Word Games'!"));
    ASSERT_TRUE(WaitFor([&] { return People() == 2; }));
    bot.game.AutoSend(1);

    // The same screen name signs on elsewhere: every panel shows the end.
    dialogs.messages.clear();
    testing_support::LoopbackUser other;
    ASSERT_TRUE(other.SignOn(server.Port()));
    ASSERT_TRUE(WaitFor([&] { return Info() == "Offline."; }));
    EXPECT_EQ(std::tuple(RoomStatus(), People(), bot.game.GameOn),
              std::tuple("Left chat.", 0, false));
    ASSERT_EQ(MessageTexts(),
              std::vector<std::string>{"Connection to the main BOS server has been lost"});

    // Sign On is not refused as if still signed on, Join gets in, and Sign
    // Off leaves the room.
    ASSERT_TRUE(SignOn());
    ASSERT_TRUE(Join());
    QTest::mouseClick(window.connection->cmdSignOff, Qt::LeftButton);
    EXPECT_EQ(std::pair(RoomStatus(), People()), std::pair(QString("Left chat."), 0));
}

}  // namespace
