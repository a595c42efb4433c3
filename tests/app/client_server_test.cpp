// The real client on Qt sockets against the loopback OSCAR server.
#include <gtest/gtest.h>

#include "app/loopback_user.h"
#include "localserver/oscar_test_server.h"

namespace {

using Lines = std::vector<std::string>;
using testing_support::LoopbackUser;
using testing_support::WaitFor;
using testserver::OscarTestServer;

class ClientServerTest : public ::testing::Test {
  protected:
    ClientServerTest() {
        EXPECT_TRUE(server.Start());
        server.AddAccount("Scramble Bot", "secret1", "bot@example.net");
        server.AddAccount("Player Two", "pass2222");
    }

    OscarTestServer server;
    LoopbackUser bot;
};

TEST_F(ClientServerTest, SignOnReportsEachStepAndTheAccount) {
    ASSERT_TRUE(bot.SignOn(server.Port()));
    EXPECT_EQ(bot.events.Take(),
              testing_support::SignOnEvents("LoggedIn(Scramble Bot, bot@example.net, 127.0.0.1)"));
    ASSERT_TRUE(WaitFor([&] { return server.BosSetups() == 1; }));
    EXPECT_EQ(server.SignedOn(), Lines{"scramblebot"});

    bot.client.SetProfile("<b>hello</b>");
    ASSERT_TRUE(WaitFor([&] { return server.Profile("scramblebot") == "<b>hello</b>"; }));
}

TEST_F(ClientServerTest, JoiningARoomListsItsOccupantsAndCarriesLines) {
    server.AddScriptedPlayer("Word Games", "Ann Agram");
    server.AddScriptedPlayer("Word Games", "Bob Scramble");
    ASSERT_TRUE(bot.SignOn(server.Port()));
    ASSERT_EQ(bot.Join(" Word Games ").substr(0, 11), "JoinedChat(");
    const std::string index = std::to_string(bot.RoomIndex());
    EXPECT_EQ(bot.events.Take(), (Lines{"UserJoinedChat(" + index + ", Ann Agram)",
                                        "UserJoinedChat(" + index + ", Bob Scramble)",
                                        "UserJoinedChat(" + index + ", Scramble Bot)",
                                        "JoinedChat(Word Games, 4, 0, " + index + ", 100, 1024)"}));

    // A scripted player's line arrives as a chat message, markup and all.
    server.PlayerSays("Word Games", "Ann Agram", "<b>hello</b> bot");
    ASSERT_TRUE(WaitFor([&] { return !bot.events.log.empty(); }));
    EXPECT_EQ(bot.events.Take(), Lines{"ChatMessage(" + index + ", Ann Agram, <b>hello</b> bot)"});

    // A second user joins; the bot's lines reach it, and come back to the bot.
    LoopbackUser two;
    ASSERT_TRUE(two.SignOn(server.Port(), "Player Two", "pass2222"));
    ASSERT_EQ(two.Join("word games").substr(0, 11), "JoinedChat(");
    ASSERT_TRUE(WaitFor([&] { return bot.Has("UserJoinedChat(" + index + ", Player Two)"); }));
    bot.client.SendChat(bot.RoomIndex(), "Unscramble: tac");
    ASSERT_TRUE(WaitFor([&] { return two.Count("ChatMessage(") > 0; }));
    EXPECT_TRUE(two.events.log.back().ends_with(", Scramble Bot, Unscramble: tac)"));
    ASSERT_TRUE(WaitFor(
        [&] { return bot.Has("ChatMessage(" + index + ", Scramble Bot, Unscramble: tac)"); }));

    // Leaving: the other user sees it.
    two.client.LeaveChat(two.RoomIndex());
    ASSERT_TRUE(WaitFor([&] { return bot.Has("UserLeftChat(" + index + ", Player Two)"); }));
}

TEST_F(ClientServerTest, GarbledFramesDoNotStopTheClient) {
    server.AddScriptedPlayer("Lobby", "Ann");
    ASSERT_TRUE(bot.SignOn(server.Port()));
    ASSERT_EQ(bot.Join("Lobby").substr(0, 11), "JoinedChat(");
    bot.events.Take();
    // A chat message cut short, then garbage with a valid length.
    server.SendRaw("Scramble Bot", testserver::Role::Chat,
                   oscar::HexToBytes("2A020000000A000E0006000000000000") +
                       oscar::HexToBytes("2A02000100050000FFFFFF"));
    server.PlayerSays("Lobby", "Ann", "still here");
    ASSERT_TRUE(WaitFor([&] { return bot.Count("ChatMessage(") > 0; }));
    EXPECT_TRUE(bot.events.log.back().ends_with(", Ann, still here)"));
}

}  // namespace
