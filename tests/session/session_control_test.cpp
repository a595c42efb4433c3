// The window's session steps: signing on, leaving a room and the status
// lines the client's events set.
#include "session/session_control.h"

#include <gtest/gtest.h>

#include "support/bot_fixture.h"

namespace session {
namespace {

using SessionControlTest = testing_support::BotTest;

TEST_F(SessionControlTest, PortsOutsideSixteenBitsAreRefused) {
    const struct {
        const char* typed;
        const char* connectedTo;  // "": refused, with a note
    } cases[] = {{"65536", ""},
                 {"0", ""},
                 {"abc", ""},
                 {"1", "127.0.0.1:1"},
                 {"65535", "127.0.0.1:65535"},
                 {" 5190x", "127.0.0.1:5190"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed);
        dialogs.messages.clear();
        sockets.connectLog.clear();
        bot.session.cmdSignOn_Click({"Bot Name", "secret1", "127.0.0.1", c.typed});
        EXPECT_EQ(sockets.connectLog.empty() ? "" : sockets.connectLog[0].second, c.connectedTo);
        EXPECT_EQ(dialogs.messages.size(), *c.connectedTo ? 0u : 1u);
        bot.session.cmdSignOff_Click();
    }
}

TEST_F(SessionControlTest, LeaveClosesTheNamedRoomOnly) {
    bot.game.SignedOn = true;
    testing_support::EnterFakeRoom(sockets, bot.client, 2);
    testing_support::EnterFakeRoom(sockets, bot.client, 3);
    bot.client.Chat()[0].ChatName = "One";
    bot.client.Chat()[1].ChatName = "Two";
    bot.session.cmdLeave_Click(" t wo");
    EXPECT_EQ(std::tuple(sockets.Exists(3), sockets.IsConnected(2), bot.session.lblChatStatus()),
              std::tuple(false, true, "Left chat."));
}

TEST_F(SessionControlTest, RoomErrorsGoToTheRoomStatusOthersToTheInfoLine) {
    for (int code : {18, 24, 46, 50, 51, 74, 1, 19, 73}) {
        SCOPED_TRACE(code);
        const bool room = code != 1 && code != 19 && code != 73;
        const std::string info = bot.session.lblInfo(), status = bot.session.lblChatStatus();
        bot.session.Error("Failed.", code, 0, "");
        const std::string expected = "Failed. Error code: " + std::to_string(code);
        EXPECT_EQ(bot.session.lblChatStatus(), room ? expected : status);
        EXPECT_EQ(bot.session.lblInfo(), room ? info : expected);
    }
}

}  // namespace
}  // namespace session
