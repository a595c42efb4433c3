// The client against the loopback server behaving as real servers do when
// things go wrong: sign-off frames, refused, silent and unreachable joins,
// redirects that cannot be followed. (Sign-on failures: session_end_test.)
#include <gtest/gtest.h>

#include <QTcpServer>
#include <QTcpSocket>

#include "app/loopback_user.h"
#include "localserver/oscar_test_server.h"

namespace {

using Lines = std::vector<std::string>;
using oscar::SessionEndCause;
using testing_support::WaitFor;
using testserver::OscarTestServer;
using testserver::Role;
using User = testing_support::LoopbackUser;

class ServerFaultsTest : public ::testing::Test {
  protected:
    ServerFaultsTest() {
        EXPECT_TRUE(server.Start());
        EXPECT_TRUE(silent.listen(QHostAddress::LocalHost, 0));
        server.AddAccount("Scramble Bot", "secret1");
        server.AddScriptedPlayer("Lobby", "Ann");
    }

    OscarTestServer server;
    QTcpServer silent;  // accepts and never speaks
    User bot;
};

TEST_F(ServerFaultsTest, ASignOffFrameEndsTheSessionVisiblyAndSaysWhy) {
    struct Case {
        const char* name;
        bool truncated;  // the second sign-on's cut-short frame
        bool stop;       // the server stops instead
        SessionEndCause cause;
        std::string description;
    };
    const std::vector<Case> cases = {
        {"signed on elsewhere", false, false, SessionEndCause::SignedOnElsewhere,
         "Signed off by the server: this screen name signed on elsewhere "
         "(https://127.0.0.1/signed-on-elsewhere)."},
        // The 4-byte fragment waits in the cutter; the close that follows ends it.
        {"cut-short frame", true, false, SessionEndCause::ConnectionLost,
         "Connection to the main BOS server has been lost."},
        {"server stops", false, true, SessionEndCause::ServerSignOff,
         "Signed off by the server: the server is stopping or restarting."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        OscarTestServer own;
        ASSERT_TRUE(own.Start());
        own.AddAccount("Scramble Bot", "secret1");
        own.AddScriptedPlayer("Lobby", "Ann");
        own.SetTruncatedSignOff(c.truncated);
        User user, second;
        ASSERT_TRUE(user.SignOn(own.Port()));
        ASSERT_EQ(user.Join("Lobby").substr(0, 11), "JoinedChat(");
        const int room = user.client.Chat()[0].ChatIndex;
        user.events.Take();

        if (c.stop) {
            own.Shutdown();
        } else {
            ASSERT_TRUE(second.SignOn(own.Port()));
        }
        ASSERT_TRUE(WaitFor([&] { return user.Count("ConnectionLost(0,"); }));
        // The room is left, whether its own connection or the session ended first.
        EXPECT_EQ(user.events.log.front(), "LeftChat(Lobby, 4, 0, " + std::to_string(room) + ")");
        EXPECT_EQ(user.events.log.back(), "ConnectionLost(0, " + c.description + ")");
        EXPECT_EQ(user.client.LastSessionEnd().cause, c.cause);
        EXPECT_TRUE(user.client.Chat().empty());
        if (!c.stop) {
            // Nothing of the old session is left to refuse a new sign-on.
            EXPECT_TRUE(user.SignOn(own.Port()));
        }
    }
}

TEST_F(ServerFaultsTest, ASignOffFrameOnAServiceConnectionEndsOnlyThatService) {
    ASSERT_TRUE(bot.SignOn(server.Port()));
    ASSERT_EQ(bot.Join("Lobby").substr(0, 11), "JoinedChat(");

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
    EXPECT_EQ(bot.Join("Lobby").substr(0, 11), "JoinedChat(");
    EXPECT_TRUE(bot.client.LoggedInState());
}

TEST_F(ServerFaultsTest, ASecondJoinWhileOneIsUnderWayIsRefusedAndTheSessionLives) {
    ASSERT_TRUE(bot.SignOn(server.Port()));
    bot.client.JoinChat("Lobby", 4, 0);
    EXPECT_TRUE(bot.client.JoinPending());
    bot.client.JoinChat("Other Room", 4, 0);
    ASSERT_TRUE(WaitFor([&] { return bot.Count("JoinedChat("); }));
    // Time for a second navigation connection's replies, had one been opened.
    WaitFor([&] { return bot.Count("ConnectionLost("); }, 300);
    EXPECT_FALSE(bot.Count("ConnectionLost("));
    ASSERT_EQ(bot.client.Chat().size(), 1u);
    EXPECT_EQ(bot.client.Chat()[0].ChatName, "Lobby");
    EXPECT_FALSE(bot.client.JoinPending());
    EXPECT_EQ(server.SignedOn(), Lines{"scramblebot"});
}

TEST_F(ServerFaultsTest, ARefusedJoinFailsWithTheServersCode) {
    ASSERT_TRUE(bot.SignOn(server.Port()));
    // Real servers refuse these with a navigation error that has no subcode.
    EXPECT_EQ(bot.Join("Nowhere", 5),
              "Error(Join chat failed, no such room on that exchange., 20, 0, 0014)");
    EXPECT_FALSE(bot.client.JoinPending());
    EXPECT_EQ(bot.Join("Lobby", 7),
              "Error(Join chat failed, the server offers no rooms on that exchange., 8, 0, 0008)");
    EXPECT_EQ(bot.Join("Lobby").substr(0, 11), "JoinedChat(");
}

TEST_F(ServerFaultsTest, AJoinThatCannotGoOnFailsSayingWhereAndCanBeTriedAgain) {
    ASSERT_TRUE(bot.SignOn(server.Port()));
    const std::string closed = [] {
        QTcpServer probe;  // a port on which nothing listens once it closes
        probe.listen(QHostAddress::LocalHost, 0);
        return "127.0.0.1:" + std::to_string(probe.serverPort());
    }();
    const std::string quiet = "127.0.0.1:" + std::to_string(silent.serverPort());
    const std::string wrapped = "127.0.0.1:" + std::to_string(server.Port() + 65536);
    struct Case {
        std::string address;
        int ticks;  // deadline seconds to let pass
        std::string error;
    };
    const std::vector<Case> cases = {
        {closed, 0,
         "Error(Join chat failed, the connection to the chat navigation server " + closed +
             " ended (Connection refused)., 0, 0, 000D)"},
        {quiet, oscar::TolSock::kStepSeconds,
         "Error(Join chat failed, no answer within 15 seconds while connecting to the chat "
         "navigation server " +
             quiet + "., 0, 0, )"},
        {wrapped, 0,
         "Error(Join chat failed, the BOS server named \"" + wrapped +
             "\" for the chat navigation service, which has no port from 1 to 65535., 0, 0, "
             "000D)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.address);
        server.SetServiceAddress(c.address);
        bot.events.Take();
        bot.client.JoinChat("Lobby", 4, 0);
        if (c.ticks > 0) {
            ASSERT_TRUE(WaitFor([&] { return silent.hasPendingConnections(); }));
            for (int i = 1; i < c.ticks; ++i)
                bot.client.TickSecond();
            EXPECT_TRUE(bot.client.JoinPending());
            bot.client.TickSecond();
        }
        ASSERT_TRUE(WaitFor([&] { return bot.Count("Error("); }));
        EXPECT_EQ(bot.events.log, Lines{c.error});
        EXPECT_FALSE(bot.client.JoinPending());
        EXPECT_EQ(bot.client.ChatNavIndex(), 0);
        while (QTcpSocket* s = silent.nextPendingConnection())
            delete s;
    }
    server.SetServiceAddress("");
    EXPECT_EQ(bot.Join("Lobby").substr(0, 11), "JoinedChat(");
}

}  // namespace
