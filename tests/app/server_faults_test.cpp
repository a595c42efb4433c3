// The client against the loopback server behaving as real servers do when
// things go wrong: sign-off frames, refused, silent and unreachable joins,
// redirects that cannot be followed. (Sign-on failures: session_end_test.)
#include <gtest/gtest.h>

#include <QTcpServer>
#include <QTcpSocket>

#include "app/qt_socket_layer.h"
#include "localserver/oscar_test_server.h"
#include "oscar/tolsock.h"
#include "support/qt_wait.h"
#include "support/recording_events.h"

namespace {

using oscar::SessionEndCause;
using testing_support::RecordingEvents;
using testing_support::WaitFor;
using testserver::OscarTestServer;
using testserver::Role;

struct User {
    User() { client.SetObserver(&events); }
    bool HasPrefix(const std::string& prefix) const {
        return std::any_of(events.log.begin(), events.log.end(),
                           [&](const std::string& l) { return l.starts_with(prefix); });
    }
    QtSocketLayer sockets;
    RecordingEvents events;
    oscar::TolSock client{sockets};
};

// A port on which nothing listens.
quint16 ClosedPort() {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort();
}

class ServerFaultsTest : public ::testing::Test {
  protected:
    ServerFaultsTest() {
        EXPECT_TRUE(server.Start());
        EXPECT_TRUE(silent.listen(QHostAddress::LocalHost, 0));
        server.AddAccount("Scramble Bot", "secret1");
        server.AddScriptedPlayer("Lobby", "Ann");
    }

    bool SignOn(User& user, quint16 port = 0) {
        user.client.Login("Scramble Bot", "secret1", port ? port : server.Port(), false, false,
                          "127.0.0.1");
        return WaitFor([&] { return user.client.LoggedInState(); });
    }
    // Waits for the join to end; the event that ended it, or "" on none.
    std::string Join(User& user, const std::string& room, int exchange = 4) {
        user.events.Take();
        user.client.JoinChat(room, exchange, 0);
        WaitFor([&] { return user.HasPrefix("JoinedChat(") || user.HasPrefix("Error("); }, 3000);
        for (const std::string& e : user.events.log) {
            if (e.starts_with("JoinedChat(") || e.starts_with("Error(")) return e;
        }
        return "";
    }
    std::string Silent() const { return "127.0.0.1:" + std::to_string(silent.serverPort()); }

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
        ASSERT_TRUE(SignOn(user, own.Port()));
        ASSERT_EQ(Join(user, "Lobby").substr(0, 11), "JoinedChat(");
        const int room = user.client.Chat()[0].ChatIndex;
        user.events.Take();

        if (c.stop) {
            own.Shutdown();
        } else {
            ASSERT_TRUE(SignOn(second, own.Port()));
        }
        ASSERT_TRUE(WaitFor([&] { return user.HasPrefix("ConnectionLost(0,"); }));
        // The room is left, whether its own connection or the session ended first.
        EXPECT_EQ(user.events.log.front(), "LeftChat(Lobby, 4, 0, " + std::to_string(room) + ")");
        EXPECT_EQ(user.events.log.back(), "ConnectionLost(0, " + c.description + ")");
        EXPECT_EQ(user.client.LastSessionEnd().cause, c.cause);
        EXPECT_TRUE(user.client.Chat().empty());
        if (!c.stop) {
            // Nothing of the old session is left to refuse a new sign-on.
            EXPECT_TRUE(SignOn(user, own.Port()));
        }
    }
}

TEST_F(ServerFaultsTest, ASignOffFrameOnAServiceConnectionEndsOnlyThatService) {
    ASSERT_TRUE(SignOn(bot));
    ASSERT_EQ(Join(bot, "Lobby").substr(0, 11), "JoinedChat(");
    const int room = bot.client.Chat()[0].ChatIndex;
    bot.events.Take();

    // The room's connection: the room is left, visibly.
    server.SendRaw("Scramble Bot", Role::Chat, oscar::HexToBytes("2A0400000000"));
    ASSERT_TRUE(WaitFor([&] { return bot.HasPrefix("ConnectionLost("); }));
    EXPECT_EQ(bot.events.Take(),
              (std::vector<std::string>{"LeftChat(Lobby, 4, 0, " + std::to_string(room) + ")",
                                        "ConnectionLost(" + std::to_string(room) +
                                            ", Connection to chat Name: Lobby, Exchange: 4, "
                                            "Instance: 0 has been lost.)"}));
    EXPECT_TRUE(bot.client.Chat().empty());

    // The navigation connection: its role goes with it, so the next join
    // opens a new one and gets in.
    const int nav = bot.client.ChatNavIndex();
    ASSERT_NE(nav, 0);
    server.SendRaw("Scramble Bot", Role::ChatNav, oscar::HexToBytes("2A0400010000"));
    ASSERT_TRUE(WaitFor([&] { return bot.HasPrefix("ConnectionLost("); }));
    EXPECT_EQ(bot.client.ChatNavIndex(), 0);
    EXPECT_EQ(Join(bot, "Lobby").substr(0, 11), "JoinedChat(");
    EXPECT_TRUE(bot.client.LoggedInState());
}

TEST_F(ServerFaultsTest, ASecondJoinWhileOneIsUnderWayIsRefusedAndTheSessionLives) {
    ASSERT_TRUE(SignOn(bot));
    bot.client.JoinChat("Lobby", 4, 0);
    EXPECT_TRUE(bot.client.JoinPending());
    bot.client.JoinChat("Other Room", 4, 0);
    ASSERT_TRUE(WaitFor([&] { return bot.HasPrefix("JoinedChat("); }));
    // Time for a second navigation connection's replies, had one been opened.
    WaitFor([&] { return bot.HasPrefix("ConnectionLost("); }, 300);
    EXPECT_FALSE(bot.HasPrefix("ConnectionLost("));
    ASSERT_EQ(bot.client.Chat().size(), 1u);
    EXPECT_EQ(bot.client.Chat()[0].ChatName, "Lobby");
    EXPECT_FALSE(bot.client.JoinPending());
    EXPECT_EQ(server.SignedOn(), std::vector<std::string>{"scramblebot"});
}

TEST_F(ServerFaultsTest, ARefusedJoinFailsWithTheServersCode) {
    ASSERT_TRUE(SignOn(bot));
    // Real servers refuse these with a navigation error that has no subcode.
    EXPECT_EQ(Join(bot, "Nowhere", 5),
              "Error(Join chat failed, no such room on that exchange., 20, 0, 0014)");
    EXPECT_FALSE(bot.client.JoinPending());
    EXPECT_EQ(Join(bot, "Lobby", 7),
              "Error(Join chat failed, the server offers no rooms on that exchange., 8, 0, 0008)");
    EXPECT_EQ(Join(bot, "Lobby").substr(0, 11), "JoinedChat(");
}

TEST_F(ServerFaultsTest, AJoinThatCannotGoOnFailsSayingWhereAndCanBeTriedAgain) {
    ASSERT_TRUE(SignOn(bot));
    const std::string closed = "127.0.0.1:" + std::to_string(ClosedPort());
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
        {Silent(), oscar::TolSock::kStepSeconds,
         "Error(Join chat failed, no answer within 15 seconds while connecting to the chat "
         "navigation server " +
             Silent() + "., 0, 0, )"},
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
        ASSERT_TRUE(WaitFor([&] { return bot.HasPrefix("Error("); }));
        EXPECT_EQ(bot.events.log, std::vector<std::string>{c.error});
        EXPECT_FALSE(bot.client.JoinPending());
        EXPECT_EQ(bot.client.ChatNavIndex(), 0);
        while (QTcpSocket* s = silent.nextPendingConnection())
            delete s;
    }
    server.SetServiceAddress("");
    EXPECT_EQ(Join(bot, "Lobby").substr(0, 11), "JoinedChat(");
}

}  // namespace
