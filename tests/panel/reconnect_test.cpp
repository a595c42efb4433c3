// Coming back by itself: the window's bot against the loopback server, which
// drops the session; the reconnect wait runs on a hand-ticked timer and clock.
#include "panel/server_window.h"

namespace {

using testing_support::WaitFor;

class ReconnectTest : public testing_support::ServerWindow {
  protected:
    ReconnectTest() {
        bot.UseReconnector(tmrReconnect, [this] { return now; });
    }
    // The reconnector goes before its timer, a member of this class.
    ~ReconnectTest() override {
        bot.session.UseReconnector(nullptr);
        bot.reconnector.reset();
    }

    // Signs on, joins and posts the first puzzle of a running game.
    void StartGame() {
        const int before = BotLines();
        ASSERT_TRUE(SignOn());
        ASSERT_TRUE(Join());
        bot.game.Lists().lstWords().AppendAll({"giraffe", "zebra", "otter"});
        QTest::mouseClick(window.mainGame->cmdAutoSendOn, Qt::LeftButton);
        ASSERT_TRUE(WaitFor([&] { return BotLines() == before + 2; }));  // banner, puzzle
    }
    // Lets the wait run out: the next try starts.
    void WaitOut(int seconds = 300) {
        now += seconds;
        tmrReconnect.Tick();
    }

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
        ASSERT_TRUE(WaitForRoomStatus("Left chat."));
        ASSERT_TRUE(WaitForInfo("Next try in "));
        // No box; the round is frozen, not ended.
        EXPECT_EQ(std::tuple(dialogs.messages.size(), tmrIdle.IsEnabled(), bot.game.GameOn),
                  std::tuple(0u, false, true));

        WaitOut();
        ASSERT_TRUE(WaitForRoomStatus("Joined 'Word Games'!"));
        // The same puzzle stays in play with its idle count; nothing was said
        // twice (one more banner on the rejoin).
        EXPECT_EQ(std::tuple(tmrIdle.IsEnabled(), bot.game.PendingAnswer().value_or(""),
                             bot.game.IdleCount),
                  std::tuple(true, answer, 5));
    }
    EXPECT_EQ(BotLines(), 4);
    tmrIdle.Tick(bot.game.IdleTime + 1);  // the next word goes to the room
    EXPECT_TRUE(WaitFor([&] { return BotLines() == 5; }));
}

TEST_F(ReconnectTest, SignedOnElsewhereAThirdTimeInTenMinutesStopsTheTries) {
    StartGame();
    for (int time = 1; time <= 3; ++time) {
        server.SignOffSession("Scramble Bot");
        ASSERT_TRUE(WaitForRoomStatus("Left chat."));
        if (time == 3) break;
        ASSERT_TRUE(WaitForInfo("signed on elsewhere"));
        ASSERT_TRUE(WaitForInfo("Next try in "));
        WaitOut(10);
        ASSERT_TRUE(WaitForRoomStatus("Joined 'Word Games'!"));
    }
    ASSERT_TRUE(WaitForInfo("Signed on from elsewhere three times within ten minutes"));
    // The tries have ended, with no box, and the game with them.
    EXPECT_EQ(std::tuple(tmrReconnect.IsEnabled(), bot.game.GameOn, dialogs.messages.size()),
              std::tuple(false, false, 0u));
}

}  // namespace
