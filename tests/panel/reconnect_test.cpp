// Coming back by itself: the window's bot against the loopback server, which
// drops the session; the reconnect wait runs on a hand-ticked timer and clock.
#include <gtest/gtest.h>

#include "localserver/oscar_test_server.h"
#include "support/qt_wait.h"
#include "support/window_fixture.h"

namespace {

using testing_support::WaitFor;

class ReconnectTest : public testing_support::WindowTest {
  protected:
    ReconnectTest() {
        EXPECT_TRUE(server.Start());
        server.AddAccount("Scramble Bot", "secret1");
        server.AddScriptedPlayer("Word Games", "Ann Agram");
        bot.UseReconnector(tmrReconnect, [this] { return now; });
    }
    // The reconnector goes before its timer, a member of this class.
    ~ReconnectTest() override {
        bot.session.UseReconnector(nullptr);
        bot.reconnector.reset();
    }

    bool Status(const std::string& text) {
        return WaitFor([&] {
            return window.connection->lblInfo->text().toStdString().find(text) != std::string::npos;
        });
    }
    bool InRoom() {
        return WaitFor(
            [&] { return window.chats->lblChatStatus->text() == "Joined 'Word Games'!"; });
    }
    // Signs on, joins and posts the first puzzle of a running game.
    void StartGame() {
        const int before = BotLines();
        window.connection->txtSN->setText("Scramble Bot");
        window.connection->txtPW->setText("secret1");
        window.connection->txtPort->setText(QString::number(server.Port()));
        QTest::mouseClick(window.connection->cmdSignOn, Qt::LeftButton);
        ASSERT_TRUE(Status("Online!"));
        window.chats->txtChat->setText("Word Games");
        QTest::mouseClick(window.chats->cmdJoin, Qt::LeftButton);
        ASSERT_TRUE(InRoom());
        bot.game.Lists().lstWords().AppendAll({"giraffe", "zebra", "otter"});
        bot.game.cmdAutoSendOn_Click();
        ASSERT_TRUE(WaitFor([&] { return BotLines() == before + 2; }));  // banner, puzzle
    }
    // Lets the wait run out: the next try starts.
    void WaitOut(int seconds = 300) {
        now += seconds;
        tmrReconnect.Tick();
    }
    int BotLines() const {
        int count = 0;
        for (const auto& line : server.Lines())
            count += line.sender == "Scramble Bot";
        return count;
    }

    testserver::OscarTestServer server;
    testing_support::FakeTimer tmrReconnect;
    long long now = 0;
};

TEST_F(ReconnectTest, LostSessionOrRoomComesBackAndTheRoundGoesOn) {
    StartGame();
    const std::string answer = bot.game.PendingAnswer().value_or("");
    tmrIdle.Tick(5);

    for (const testserver::Role role : {testserver::Role::Bos, testserver::Role::Chat}) {
        SCOPED_TRACE(role == testserver::Role::Bos ? "session" : "room");
        server.CloseConnection("Scramble Bot", role);
        ASSERT_TRUE(WaitFor([&] { return window.chats->lblChatStatus->text() == "Left chat."; }));
        ASSERT_TRUE(Status("Next try in "));
        // No box; the round is frozen, not ended.
        EXPECT_TRUE(dialogs.messages.empty());
        EXPECT_FALSE(tmrIdle.IsEnabled());
        EXPECT_TRUE(bot.game.GameOn);
        ASSERT_FALSE(bot.errors.Empty());
        EXPECT_NE(bot.errors.At(bot.errors.Count() - 1).find("Next try in "), std::string::npos);
        EXPECT_TRUE(window.console->txtMsg->toPlainText().contains("Next try in "));

        WaitOut();
        ASSERT_TRUE(InRoom());
        // The same puzzle stays in play with its idle count; nothing was said
        // twice (one more banner on the rejoin).
        EXPECT_TRUE(tmrIdle.IsEnabled());
        EXPECT_EQ(bot.game.PendingAnswer().value_or(""), answer);
        EXPECT_EQ(bot.game.IdleCount, 5);
    }
    EXPECT_EQ(BotLines(), 4);
    tmrIdle.Tick(bot.game.IdleTime + 1);  // the next word goes to the room
    EXPECT_TRUE(WaitFor([&] { return BotLines() == 5; }));
}

TEST_F(ReconnectTest, SignedOnElsewhereAThirdTimeInTenMinutesStopsTheTries) {
    StartGame();
    for (int time = 1; time <= 3; ++time) {
        server.SignOffSession("Scramble Bot");
        ASSERT_TRUE(WaitFor([&] { return window.chats->lblChatStatus->text() == "Left chat."; }));
        if (time == 3) break;
        ASSERT_TRUE(Status("signed on elsewhere"));
        ASSERT_TRUE(Status("Next try in "));
        WaitOut(10);
        ASSERT_TRUE(InRoom());
    }
    ASSERT_TRUE(Status("Signed on from elsewhere three times within ten minutes"));
    EXPECT_FALSE(tmrReconnect.IsEnabled());
    EXPECT_FALSE(bot.game.GameOn);
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(ReconnectTest, ARefusedPasswordStopsTheTriesAndSaysWhy) {
    StartGame();
    server.AddAccount("Scramble Bot", "changed");
    server.CloseConnection("Scramble Bot", testserver::Role::Bos);
    ASSERT_TRUE(Status("Next try in "));
    WaitOut();
    ASSERT_TRUE(Status("The password was refused"));
    EXPECT_FALSE(tmrReconnect.IsEnabled());
    EXPECT_FALSE(bot.game.GameOn);
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(ReconnectTest, WithTheOptionOffOrAfterSignOffTheSessionStaysEnded) {
    StartGame();
    QTest::mouseClick(window.connection->cmdSignOff, Qt::LeftButton);
    EXPECT_FALSE(tmrReconnect.IsEnabled());
    EXPECT_FALSE(bot.game.GameOn);

    StartGame();
    window.connection->chkReconnect->setChecked(false);
    server.CloseConnection("Scramble Bot", testserver::Role::Bos);
    ASSERT_TRUE(WaitFor([&] { return !dialogs.messages.empty(); }));
    EXPECT_EQ(dialogs.messages[0].text, "Connection to the main BOS server has been lost");
    EXPECT_EQ(window.connection->lblInfo->text(), "Offline.");
    EXPECT_FALSE(tmrReconnect.IsEnabled());
    EXPECT_FALSE(bot.game.GameOn);
}

}  // namespace
