// The real client on Qt sockets against the loopback OSCAR server.
#include <gtest/gtest.h>

#include "app/qt_socket_layer.h"
#include "localserver/oscar_test_server.h"
#include "oscar/tolsock.h"
#include "support/qt_wait.h"
#include "support/recording_events.h"

namespace {

using testing_support::RecordingEvents;
using testing_support::WaitFor;
using testserver::OscarTestServer;

// One user of the server: a client with its own sockets and event log.
struct User {
    User() { client.SetObserver(&events); }
    bool Has(const std::string& line) const {
        return std::find(events.log.begin(), events.log.end(), line) != events.log.end();
    }
    bool HasPrefix(const std::string& prefix) const {
        return std::any_of(events.log.begin(), events.log.end(),
                           [&](const std::string& l) { return l.starts_with(prefix); });
    }
    QtSocketLayer sockets;
    RecordingEvents events;
    oscar::TolSock client{sockets};
};

class ClientServerTest : public ::testing::Test {
  protected:
    ClientServerTest() {
        EXPECT_TRUE(server.Start());
        server.AddAccount("Scramble Bot", "secret1", "bot@example.net");
        server.AddAccount("Player Two", "pass2222");
    }

    bool SignOn(User& user, const std::string& name, const std::string& password) {
        user.client.Login(name, password, server.Port(), false, false, "127.0.0.1");
        return WaitFor(
            [&] { return user.HasPrefix("LoggedIn(") || user.HasPrefix("LoginError("); });
    }

    bool Join(User& user, const std::string& room) {
        user.client.JoinChat(room, 4, 0);
        return WaitFor([&] { return user.HasPrefix("JoinedChat(") || user.HasPrefix("Error("); });
    }

    OscarTestServer server;
    User bot;
};

TEST_F(ClientServerTest, SignOnReportsEachStepAndTheAccount) {
    ASSERT_TRUE(SignOn(bot, "Scramble Bot", "secret1"));
    EXPECT_EQ(bot.events.Take(),
              testing_support::SignOnEvents("LoggedIn(Scramble Bot, bot@example.net, 127.0.0.1)"));
    ASSERT_TRUE(WaitFor([&] { return server.BosSetups() == 1; }));
    EXPECT_EQ(server.SignedOn(), std::vector<std::string>{"scramblebot"});

    bot.client.SetProfile("<b>hello</b>");
    ASSERT_TRUE(WaitFor([&] { return server.Profile("scramblebot") == "<b>hello</b>"; }));
}

TEST_F(ClientServerTest, JoiningARoomListsItsOccupantsAndCarriesLines) {
    server.AddScriptedPlayer("Word Games", "Ann Agram");
    server.AddScriptedPlayer("Word Games", "Bob Scramble");
    ASSERT_TRUE(SignOn(bot, "Scramble Bot", "secret1"));
    bot.events.Take();
    ASSERT_TRUE(Join(bot, " Word Games "));
    ASSERT_TRUE(WaitFor([&] { return bot.events.log.size() >= 4; }));
    ASSERT_EQ(bot.client.Chat().size(), 1u);
    const std::string index = std::to_string(bot.client.Chat()[0].ChatIndex);
    EXPECT_EQ(bot.events.Take(),
              (std::vector<std::string>{"UserJoinedChat(" + index + ", Ann Agram)",
                                        "UserJoinedChat(" + index + ", Bob Scramble)",
                                        "UserJoinedChat(" + index + ", Scramble Bot)",
                                        "JoinedChat(Word Games, 4, 0, " + index + ", 100, 1024)"}));

    // A scripted player's line arrives as a chat message.
    server.PlayerSays("Word Games", "Ann Agram", "<b>hello</b> bot");
    ASSERT_TRUE(WaitFor([&] { return !bot.events.log.empty(); }));
    EXPECT_EQ(bot.events.Take(),
              std::vector<std::string>{"ChatMessage(" + index + ", Ann Agram, <b>hello</b> bot)"});

    // A second user joins; the bot's lines reach it, and come back to the bot.
    User two;
    ASSERT_TRUE(SignOn(two, "Player Two", "pass2222"));
    ASSERT_TRUE(Join(two, "word games"));
    ASSERT_TRUE(WaitFor([&] { return bot.Has("UserJoinedChat(" + index + ", Player Two)"); }));
    bot.client.SendChat(bot.client.Chat()[0].ChatIndex, "Unscramble: tac");
    ASSERT_TRUE(WaitFor([&] { return two.HasPrefix("ChatMessage("); }));
    EXPECT_TRUE(two.HasPrefix("ChatMessage(") &&
                two.events.log.back().ends_with(", Scramble Bot, Unscramble: tac)"));
    ASSERT_TRUE(WaitFor(
        [&] { return bot.Has("ChatMessage(" + index + ", Scramble Bot, Unscramble: tac)"); }));
    EXPECT_EQ(server.Lines().back().text, "Unscramble: tac");

    // Leaving: the other user sees it.
    two.client.LeaveChat(two.client.Chat()[0].ChatIndex);
    ASSERT_TRUE(WaitFor([&] { return bot.Has("UserLeftChat(" + index + ", Player Two)"); }));
}

TEST_F(ClientServerTest, MigrationMovesTheSessionWithoutASecondLoggedIn) {
    ASSERT_TRUE(SignOn(bot, "Scramble Bot", "secret1"));
    ASSERT_TRUE(WaitFor([&] { return server.BosSetups() == 1; }));
    server.PauseSession("Scramble Bot");
    ASSERT_TRUE(WaitFor([&] { return bot.client.Paused(); }));
    server.MigrateSession("Scramble Bot");
    ASSERT_TRUE(WaitFor([&] { return server.BosSetups() == 2; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(std::count_if(bot.events.log.begin(), bot.events.log.end(),
                            [](const std::string& e) { return e.starts_with("LoggedIn("); }),
              1);
    EXPECT_FALSE(bot.client.Paused());
    bot.client.SetProfile("after the move");
    ASSERT_TRUE(WaitFor([&] { return server.Profile("scramblebot") == "after the move"; }));
}

TEST_F(ClientServerTest, GarbledFramesDoNotStopTheClient) {
    server.AddScriptedPlayer("Lobby", "Ann");
    ASSERT_TRUE(SignOn(bot, "Scramble Bot", "secret1"));
    ASSERT_TRUE(Join(bot, "Lobby"));
    bot.events.Take();
    // A chat message cut short, then garbage with a valid length.
    server.SendRaw("Scramble Bot", testserver::Role::Chat,
                   oscar::HexToBytes("2A020000000A000E0006000000000000") +
                       oscar::HexToBytes("2A02000100050000FFFFFF"));
    server.PlayerSays("Lobby", "Ann", "still here");
    ASSERT_TRUE(WaitFor([&] { return bot.HasPrefix("ChatMessage("); }));
    EXPECT_TRUE(bot.events.log.back().ends_with(", Ann, still here)"));
}

}  // namespace
