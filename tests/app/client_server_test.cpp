// The real client on Qt sockets against the loopback OSCAR server: what
// another client receives of the bot's lines, and the server's rate limits
// and echoes. (Sign-on and joins: the window tests and the soak run.)
#include <gtest/gtest.h>

#include "app/loopback_user.h"
#include "app/qt_clock.h"
#include "localserver/oscar_test_server.h"

namespace {

using Lines = std::vector<std::string>;
using oscar::HexToBytes;
using oscar::MakeTLV;
using testing_support::LoopbackUser;
using testing_support::WaitFor;
using testserver::OscarTestServer;

class RatesServerTest : public ::testing::Test {
  protected:
    RatesServerTest() {
        EXPECT_TRUE(server.Start());
        server.AddAccount("Scramble Bot", "secret1", "bot@example.net");
        server.AddAccount("Player Two", "secret1");
    }

    // Signs on and joins "Word Games"; returns the room's index, 0 on failure.
    int Enter(LoopbackUser& user, const std::string& name = "Scramble Bot") {
        if (!user.SignOn(server.Port(), name)) return 0;
        return user.Join("Word Games").starts_with("JoinedChat(") ? user.RoomIndex() : 0;
    }
    // The bot and Player Two in the room with no events yet; the bot's index.
    int EnterBoth() {
        const int room = Enter(bot) && Enter(player, "Player Two") ? bot.RoomIndex() : 0;
        bot.events.Take();
        player.events.Take();
        return room;
    }

    // The lines the bot said in the room, as the server relayed them.
    Lines BotLines() const {
        Lines lines;
        for (const auto& line : server.Lines())
            if (line.sender == "Scramble Bot") lines.push_back(line.text);
        return lines;
    }

    OscarTestServer server;
    QtClock clock;  // before the users: the bot's client uses it until it goes
    LoopbackUser bot, player;
};

// The send queue against the server's own rate classes: nothing else floods.
TEST_F(RatesServerTest, AFloodOfThreeHundredLinesReachesTheRoomInOrderWithoutAWarning) {
    // Every level divided by 100: the same average, in seconds, not minutes.
    server.SetRateDivisor(100);
    bot.client.SetClock(&clock);
    const int room = Enter(bot);
    ASSERT_NE(room, 0);
    Lines sent;
    for (int i = 0; i < 300; ++i) {
        sent.push_back("flood line " + std::to_string(i));
        bot.client.SendChat(room, sent.back());
    }
    EXPECT_GT(bot.client.Waiting(room), 0u);
    ASSERT_TRUE(WaitFor([&] { return BotLines().size() >= 300; }, 60000))
        << BotLines().size() << " lines arrived, " << server.DroppedSnacs() << " dropped";
    EXPECT_EQ(BotLines(), sent);
    EXPECT_EQ(server.DroppedSnacs(), 0);
    EXPECT_TRUE(server.RateNotices().empty()) << "the server warned";
}

TEST_F(RatesServerTest, LinesCarryTheNarrowestCharsetAndIncomingUtf16IsDecoded) {
    const int room = EnterBoth();
    ASSERT_NE(room, 0);
    const std::pair<std::string, std::string> cases[] = {
        {HexToBytes("AB") + "Hi" + HexToBytes("BB"), "iso-8859-1"},
        {HexToBytes("93") + "ok" + HexToBytes("9420") + "5" + HexToBytes("80"), "unicode-2-0"}};
    for (const auto& [text, charset] : cases) {
        bot.client.SendChat(room, text);
        ASSERT_TRUE(WaitFor([&] { return player.Count("ChatMessage(") > 0; }));
        EXPECT_EQ(server.Lines().back().charset, charset);
        EXPECT_EQ(player.events.Take(), Lines{"ChatMessage(" + std::to_string(player.RoomIndex()) +
                                              ", Scramble Bot, " + text + ")"});
    }
    // From a modern client: UTF-16, the character set after the text.
    bot.events.Take();
    server.PlayerSaysBlock("Word Games", "Ann Agram",
                           MakeTLV("0001", 2, HexToBytes("00C70061002000760061002020AC4E2D")) +
                               MakeTLV("0002", 2, "unicode-2-0") + MakeTLV("0003", 2, "en"));
    ASSERT_TRUE(WaitFor([&] { return bot.Count("ChatMessage(") > 0; }));
    EXPECT_EQ(bot.events.Take(), Lines{"ChatMessage(" + std::to_string(room) + ", Ann Agram, " +
                                       HexToBytes("C76120766120803F") + ")"});
}

// The local server holds its players to the rate classes and echoes as real
// servers do; the other tests and the soak run rely on both.
TEST_F(RatesServerTest, TheServerDropsAnUnpacedFloodPastTheLimitThenDisconnects) {
    // Without a clock the client writes every line at once.
    const int room = Enter(bot);
    ASSERT_NE(room, 0);
    for (int i = 0; i < 160; ++i)
        bot.client.SendChat(room, "burst " + std::to_string(i));
    ASSERT_TRUE(WaitFor([&] { return bot.client.Chat().empty(); }));
    // 6000 * (79/80)^n: below the alert level (2000) at the 88th line, below
    // the limit (1500) at the 111th, below the disconnect level at the 143rd.
    EXPECT_GE(BotLines().size(), 105u);
    EXPECT_LE(BotLines().size(), 112u);
    EXPECT_EQ(server.RateNotices(), (std::vector<int>{2, 3}));
    EXPECT_GE(server.DroppedSnacs(), 30);
    EXPECT_EQ(server.SignedOn(), Lines{"scramblebot"}) << "BOS stays";
}

TEST_F(RatesServerTest, TheServerEchoesALineOnlyToASenderThatAsks) {
    const int room = EnterBoth();
    ASSERT_NE(room, 0);
    // SendChat asks with TLV 0x0006; the same line without it is not echoed.
    bot.client.SendChat(room, "echo me");
    bot.client.SendPacket(room, 2,
                          HexToBytes("000E000500000000000500000000000000010003") +
                              MakeTLV("0001", 2, "") +
                              MakeTLV("0005", 2,
                                      MakeTLV("0002", 2, "us-ascii") + MakeTLV("0003", 2, "en") +
                                          MakeTLV("0001", 2, "quiet")));
    ASSERT_TRUE(WaitFor([&] { return player.Count("ChatMessage(") == 2; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(bot.events.Take(),
              Lines{"ChatMessage(" + std::to_string(room) + ", Scramble Bot, echo me)"});
}

}  // namespace
