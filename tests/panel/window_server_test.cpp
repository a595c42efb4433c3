// The window against the loopback OSCAR server, driven through its controls.
#include <gtest/gtest.h>

#include "game/style.h"
#include "localserver/oscar_test_server.h"
#include "support/qt_wait.h"
#include "support/window_fixture.h"

namespace {

using testing_support::WaitFor;
using testing_support::WindowTest;

class WindowServerTest : public WindowTest {
  protected:
    WindowServerTest() {
        EXPECT_TRUE(server.Start());
        server.AddAccount("Scramble Bot", "secret1");
        server.AddScriptedPlayer("Word Games", "Ann Agram");
        server.AddScriptedPlayer("Word Games", "Bob Scramble");
    }

    bool SignOn() {
        window.connection->txtSN->setText("Scramble Bot");
        window.connection->txtPW->setText("secret1");
        window.connection->cmbServers->setEditText("127.0.0.1");
        window.connection->txtPort->setText(QString::number(server.Port()));
        QTest::mouseClick(window.connection->cmdSignOn, Qt::LeftButton);
        return WaitFor([&] { return window.connection->lblInfo->text() == "Online!"; });
    }

    bool Join() {
        window.chats->txtChat->setText("Word Games");
        QTest::mouseClick(window.chats->cmdJoin, Qt::LeftButton);
        return WaitFor(
            [&] { return window.chats->lblChatStatus->text() == "Joined 'Word Games'!"; });
    }

    testserver::OscarTestServer server;
};

TEST_F(WindowServerTest, SignOnJoinChatAndSignOff) {
    ASSERT_TRUE(SignOn());
    EXPECT_TRUE(bot.game.SignedOn);
    ASSERT_TRUE(WaitFor([&] {
        return server.Profile("scramblebot").find("User: <font color=red>Unknown") !=
               std::string::npos;
    }));

    ASSERT_TRUE(Join());
    // The banner reaches the room with the style prefix.
    ASSERT_TRUE(WaitFor([&] { return !server.Lines().empty(); }));
    EXPECT_EQ(server.Lines()[0].sender, "Scramble Bot");
    EXPECT_EQ(server.Lines()[0].text, bot.game.Style().Styled(game::JoinBanner()));

    const QString transcript = window.console->txtMsg->toPlainText();
    EXPECT_TRUE(transcript.contains("You have entered chat room 'Word Games'."));
    EXPECT_TRUE(transcript.contains("OnlineHost: Ann Agram has entered the room."));
    EXPECT_EQ(window.console->lblPeopleCount->text(), "3 People Here");
    EXPECT_EQ(window.console->lstPeopleHere->model()->index(0, 0).data().toString(), "annagram");
    EXPECT_EQ(window.console->lblChatRoom->text(), "Chat Room: Word Games");

    server.PlayerSays("Word Games", "Ann Agram", "<b>hello</b> there");
    ASSERT_TRUE(WaitFor(
        [&] { return window.console->txtMsg->toPlainText().contains("Ann Agram: hello there"); }));

    // The console's line goes to the room; Enter empties it.
    window.console->txtSend->setText("hi all");
    QTest::keyClick(window.console->txtSend, Qt::Key_Return);
    EXPECT_TRUE(window.console->txtSend->text().isEmpty());
    ASSERT_TRUE(
        WaitFor([&] { return server.Lines().back().text == bot.game.Style().Styled("hi all"); }));

    server.RemoveScriptedPlayer("Word Games", "Bob Scramble");
    ASSERT_TRUE(WaitFor([&] { return window.console->lblPeopleCount->text() == "2 People Here"; }));

    QTest::mouseClick(window.connection->cmdSignOff, Qt::LeftButton);
    EXPECT_EQ(window.connection->lblInfo->text(), "Offline.");
    EXPECT_FALSE(bot.game.SignedOn);
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(WindowServerTest, AWrongPasswordShowsTheErrorInTheStatus) {
    window.connection->txtSN->setText("Scramble Bot");
    window.connection->txtPW->setText("wrong1");
    window.connection->txtPort->setText(QString::number(server.Port()));
    QTest::mouseClick(window.connection->cmdSignOn, Qt::LeftButton);
    EXPECT_EQ(window.connection->lblInfo->text(), "Logging in...");
    ASSERT_TRUE(WaitFor([&] {
        return window.connection->lblInfo->text() ==
               "The password you entered is not valid. Error code: 5";
    }));
    EXPECT_FALSE(bot.game.SignedOn);
}

}  // namespace
