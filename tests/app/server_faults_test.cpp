// The client against the loopback server behaving as real servers do when
// things go wrong: sign-off frames, joins that cannot go on, a second join.
// (Sign-on failures: the window's server tests; the server stopping: the
// soak's outages.)
#include <gtest/gtest.h>

#include <QTcpServer>

#include "app/loopback_user.h"
#include "localserver/oscar_test_server.h"

namespace {

using Lines = std::vector<std::string>;
using oscar::SessionEndCause;
using testing_support::WaitFor;
using testserver::OscarTestServer;
using testserver::Role;
using User = testing_support::LoopbackUser;

// Every case starts with the bot signed on.
class ServerFaultsTest : public ::testing::Test {
  protected:
    ServerFaultsTest() {
        EXPECT_TRUE(server.Start());
        server.AddAccount("Scramble Bot", "secret1");
        server.AddScriptedPlayer("Lobby", "Ann");
    }
    void SetUp() override { ASSERT_TRUE(bot.SignOn(server.Port())); }

    bool JoinLobby() { return bot.Join("Lobby").starts_with("JoinedChat("); }

    OscarTestServer server;
    User bot;
};

TEST_F(ServerFaultsTest, ACutShortSignOffFrameStillEndsTheSession) {
    server.SetTruncatedSignOff(true);
    ASSERT_TRUE(JoinLobby());
    bot.events.Take();
    // The same name signing on elsewhere: the 4-byte fragment waits in the
    // cutter; the close that follows ends the session.
    User second;
    ASSERT_TRUE(second.SignOn(server.Port()));
    ASSERT_TRUE(WaitFor([&] { return bot.Count("ConnectionLost(0,"); }));
    EXPECT_EQ(bot.client.LastSessionEnd().cause, SessionEndCause::ConnectionLost);
    EXPECT_TRUE(bot.client.Chat().empty());
}

TEST_F(ServerFaultsTest, ASignOffFrameOnAServiceConnectionEndsOnlyThatService) {
    ASSERT_TRUE(JoinLobby());
    // The room's connection: the room is left (its events: ConnectionsTest).
    server.SendRaw("Scramble Bot", Role::Chat, oscar::HexToBytes("2A0400000000"));
    ASSERT_TRUE(WaitFor([&] { return bot.client.Chat().empty(); }));
    bot.events.Take();

    // The navigation connection: its role goes with it, so the next join
    // opens a new one and gets in.
    const int nav = bot.client.ChatNavIndex();
    ASSERT_NE(nav, 0);
    server.SendRaw("Scramble Bot", Role::ChatNav, oscar::HexToBytes("2A0400010000"));
    ASSERT_TRUE(WaitFor([&] { return bot.Count("ConnectionLost("); }));
    EXPECT_EQ(bot.events.Take(),
              Lines{"ConnectionLost(" + std::to_string(nav) +
                    ", Connection to the chat navigation server has been lost.)"});
    EXPECT_EQ(bot.client.ChatNavIndex(), 0);
    EXPECT_TRUE(JoinLobby() && bot.client.LoggedInState());
}

TEST_F(ServerFaultsTest, AFailedJoinSaysWhereAndOfTwoJoinsAtOnceOnlyTheFirstGoesOn) {
    const std::string closed = [] {
        QTcpServer probe;  // a port on which nothing listens once it closes
        probe.listen(QHostAddress::LocalHost, 0);
        return "127.0.0.1:" + std::to_string(probe.serverPort());
    }();
    server.SetServiceAddress(closed);
    EXPECT_EQ(bot.Join("Lobby"),
              "Error(Join chat failed, the connection to the chat navigation "
              "server " +
                  closed + " ended (Connection refused)., 0, 0, 000D)");

    // Tried again, twice at once: the second is refused and the session lives.
    server.SetServiceAddress("");
    bot.events.Take();
    bot.client.JoinChat("Lobby", 4, 0);
    bot.client.JoinChat("Other Room", 4, 0);
    ASSERT_TRUE(WaitFor([&] { return bot.Count("JoinedChat("); }));
    // Time for a second navigation connection's replies, had one been opened.
    EXPECT_FALSE(WaitFor([&] { return bot.Count("ConnectionLost("); }, 300));
    ASSERT_EQ(bot.client.Chat().size(), 1u);
    EXPECT_EQ(bot.client.Chat()[0].ChatName, "Lobby");
    EXPECT_FALSE(bot.client.JoinPending());
}

}  // namespace
