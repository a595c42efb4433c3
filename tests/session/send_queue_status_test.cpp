// The operator sees room lines wait for the server's rate limit, and go.
#include <gtest/gtest.h>

#include "support/bot_fixture.h"
#include "support/fake_clock.h"

namespace {

class SendQueueStatusTest : public testing_support::BotTest {
  protected:
    SendQueueStatusTest() {
        bot.client.SetClock(&clock);
        testing_support::EnterFakeRoom(sockets, bot.client, 2);
        // Chat lines in a class of window 10, clear 3000, alert 2000, limit
        // 1500, disconnect 1000, current and max 6000: eight go at once.
        sockets.Deliver(2,
                        oscar::HexToBytes("2A020000003200010007000000000000"
                                          "00010002"
                                          "0000000A00000BB8000007D0000005DC000003E80000177000001770"
                                          "00020001000E0005"));
    }
    ~SendQueueStatusTest() override { bot.client.SetClock(nullptr); }

    int Count(const std::string& line) const {
        const std::string text = bot.console.Text();
        int count = 0;
        for (auto at = text.find(line); at != std::string::npos; at = text.find(line, at + 1))
            ++count;
        return count;
    }

    testing_support::FakeClock clock;
};

TEST_F(SendQueueStatusTest, TheConsoleSaysOnceWhenLinesWaitAndOnceWhenTheyAreGone) {
    const std::string waiting = "(Lines are waiting to stay under the server's rate limit...)";
    const std::string sent = "(All waiting lines have been sent.)";
    for (int i = 0; i < 12; ++i)
        bot.session.cmdSendChat_Click("hello " + std::to_string(i));
    EXPECT_EQ(std::tuple(Count(waiting), Count(sent)), std::tuple(1, 0));
    clock.Advance(60000);
    EXPECT_EQ(std::tuple(bot.client.Waiting(2), Count(sent)), std::tuple(0u, 1));

    for (int i = 0; i < 12; ++i)
        bot.session.cmdSendChat_Click("again " + std::to_string(i));
    EXPECT_EQ(Count(waiting), 2);
    sockets.Fail(2);
    EXPECT_EQ(Count("(The waiting lines were lost with the room's connection.)"), 1);
}

}  // namespace
