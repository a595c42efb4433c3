// Rate limits and character sets between the real client on Qt sockets and
// the loopback OSCAR server.
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

class RatesServerTest : public ::testing::Test {
  protected:
    RatesServerTest() {
        EXPECT_TRUE(server.Start());
        server.AddAccount("Scramble Bot", "secret1");
        server.AddAccount("Player Two", "pass2222");
    }

    // Signs on and joins "Word Games"; returns the room's index, 0 on failure.
    int Enter(LoopbackUser& user, const std::string& name = "Scramble Bot",
              const std::string& password = "secret1") {
        if (!user.SignOn(server.Port(), name, password)) return 0;
        return user.Join("Word Games").starts_with("JoinedChat(") ? user.RoomIndex() : 0;
    }

    // The lines the bot said in the room, as the server relayed them.
    std::vector<testserver::RelayedLine> BotLines() const {
        std::vector<testserver::RelayedLine> lines;
        for (const auto& line : server.Lines()) {
            if (line.sender == "Scramble Bot") lines.push_back(line);
        }
        return lines;
    }

    testserver::OscarTestServer server;
    // Before the bot: its client holds it to the end.
    QtClock clock;
    LoopbackUser bot;
};

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
    Lines arrived;
    for (const auto& line : BotLines())
        arrived.push_back(line.text);
    EXPECT_EQ(arrived, sent);
    EXPECT_EQ(server.DroppedSnacs(), 0);
    EXPECT_TRUE(server.RateNotices().empty()) << "the server warned";
}

TEST_F(RatesServerTest, LinesCarryTheNarrowestCharsetAndIncomingUtf16IsDecoded) {
    const int room = Enter(bot);
    ASSERT_NE(room, 0);
    LoopbackUser player;
    ASSERT_NE(Enter(player, "Player Two", "pass2222"), 0);
    player.events.Take();
    const std::pair<std::string, std::string> cases[] = {
        {HexToBytes("AB") + "Hi" + HexToBytes("BB"), "iso-8859-1"},
        {HexToBytes("93") + "ok" + HexToBytes("9420") + "5" + HexToBytes("80"), "unicode-2-0"}};
    for (const auto& [text, charset] : cases) {
        bot.client.SendChat(room, text);
        ASSERT_TRUE(WaitFor([&] { return player.Count("ChatMessage(") > 0; }));
        EXPECT_EQ(BotLines().back().charset, charset);
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

}  // namespace
