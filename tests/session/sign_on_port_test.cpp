// The port typed on the Connection panel: only 1 to 65535 is a port.
#include <gtest/gtest.h>

#include "support/bot_fixture.h"

namespace session {
namespace {

using testing_support::BotTest;

class SignOnPortTest : public BotTest {};

TEST_F(SignOnPortTest, PortsOutsideSixteenBitsAreRefused) {
    struct Case {
        const char* typed;
        const char* connectedTo;  // nullptr: refused
    } cases[] = {
        {"99999", nullptr}, {"65536", nullptr}, {"0", nullptr},     {"abc", nullptr},
        {"-5", nullptr},    {"1", "1"},         {"65535", "65535"}, {" 5190x", "5190"},
    };
    for (const Case& c : cases) {
        dialogs.messages.clear();
        sockets.connectLog.clear();
        bot.session.cmdSignOn_Click({"Bot Name", "secret1", "127.0.0.1", c.typed});
        if (c.connectedTo) {
            ASSERT_EQ(sockets.connectLog.size(), 1u) << c.typed;
            EXPECT_EQ(sockets.connectLog[0].second, std::string("127.0.0.1:") + c.connectedTo);
            EXPECT_TRUE(dialogs.messages.empty()) << c.typed;
            bot.session.cmdSignOff_Click();
        } else {
            EXPECT_TRUE(sockets.connectLog.empty()) << c.typed;
            EXPECT_EQ(Messages(),
                      std::vector<std::string>{"Note: The port must be a number from 1 to 65535!"})
                << c.typed;
            EXPECT_NE(bot.session.lblInfo(), "Logging in...") << c.typed;
        }
    }
}

}  // namespace
}  // namespace session
