// Keep-alives, rate limits and character sets between the real client on Qt
// sockets and the loopback OSCAR server.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <iostream>

#include "app/qt_clock.h"
#include "app/qt_socket_layer.h"
#include "localserver/oscar_test_server.h"
#include "oscar/tolsock.h"
#include "support/fake_clock.h"
#include "support/qt_wait.h"
#include "support/recording_events.h"

namespace {

using oscar::HexToBytes;
using oscar::MakeTLV;
using testing_support::WaitFor;
using testserver::Role;

struct User {
    User() { client.SetObserver(&events); }
    int Count(const std::string& prefix) const {
        return static_cast<int>(
            std::count_if(events.log.begin(), events.log.end(),
                          [&](const auto& l) { return l.starts_with(prefix); }));
    }
    QtSocketLayer sockets;
    testing_support::RecordingEvents events;
    oscar::TolSock client{sockets};
};

class RatesServerTest : public ::testing::Test {
  protected:
    RatesServerTest() {
        EXPECT_TRUE(server.Start());
        server.AddAccount("Scramble Bot", "secret1");
        server.AddAccount("Player Two", "pass2222");
    }

    // Signs on and joins "Word Games"; returns the room's index, 0 on failure.
    int Enter(User& user, const std::string& name, const std::string& password) {
        user.client.Login(name, password, server.Port(), false, false, "127.0.0.1");
        if (!WaitFor([&] { return user.Count("LoggedIn(") > 0; })) return 0;
        user.client.JoinChat("Word Games", 4, 0);
        if (!WaitFor([&] { return !user.client.Chat().empty() && user.Count("JoinedChat(") > 0; }))
            return 0;
        return user.client.Chat().front().ChatIndex;
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
    // Before the bot: its client holds one of them to the end.
    testing_support::FakeClock fakeClock;
    QtClock clock;
    User bot;
};

TEST_F(RatesServerTest, EveryOpenConnectionSendsAKeepAliveAfterAMinuteIdle) {
    bot.client.SetClock(&fakeClock);
    ASSERT_NE(Enter(bot, "Scramble Bot", "secret1"), 0);
    fakeClock.Advance(59000);
    QCoreApplication::processEvents();
    EXPECT_EQ(server.KeepAlives("Scramble Bot", Role::Bos), 0);
    fakeClock.Advance(1000);
    for (Role role : {Role::Bos, Role::ChatNav, Role::Chat}) {
        EXPECT_TRUE(WaitFor([&] { return server.KeepAlives("Scramble Bot", role) == 1; }))
            << static_cast<int>(role);
    }
    // The server takes them without a word; the session goes on.
    bot.client.SendChat(bot.client.Chat().front().ChatIndex, "still here");
    EXPECT_TRUE(WaitFor([&] { return BotLines().size() == 1; }));
    EXPECT_EQ(server.SignedOn(), std::vector<std::string>{"scramblebot"});
}

TEST_F(RatesServerTest, AFloodOfThreeHundredLinesReachesTheRoomInOrderAtTheClassesPace) {
    // Every level divided by 100 (clear 30, alert 20, limit 15, disconnect
    // 10, max 60 ms; window 80): the same average, in seconds, not minutes.
    server.SetRateDivisor(100);
    bot.client.SetClock(&clock);
    const int room = Enter(bot, "Scramble Bot", "secret1");
    ASSERT_NE(room, 0);

    // The pace the class allows this client: the same rule on paper.
    oscar::RateLimiter paper;
    const oscar::RateClass chat = server.RateClassParams(2);
    const std::string classes = oscar::Word(1) + oscar::Word(2) + oscar::DWord(chat.window) +
                                oscar::DWord(chat.clear) + oscar::DWord(chat.alert) +
                                oscar::DWord(chat.limit) + oscar::DWord(chat.disconnect) +
                                oscar::DWord(chat.current) + oscar::DWord(chat.max) +
                                oscar::Word(2) + oscar::Word(1) + oscar::DWord(0x000E0005);
    ASSERT_TRUE(paper.ReadClasses(classes, 0));
    std::int64_t expected = 0;
    for (int i = 0; i < 300; ++i) {
        expected += paper.Wait(0x000E, 0x0005, expected);
        paper.Sent(0x000E, 0x0005, expected);
    }

    QElapsedTimer taken;
    taken.start();
    std::vector<std::string> sent;
    for (int i = 0; i < 300; ++i) {
        sent.push_back("flood line " + std::to_string(i));
        bot.client.SendChat(room, sent.back());
    }
    ASSERT_LT(taken.elapsed(), 1000);
    EXPECT_GT(bot.client.Waiting(room), 0u);
    ASSERT_TRUE(WaitFor([&] { return BotLines().size() >= 300; }, 60000))
        << BotLines().size() << " lines arrived, " << server.DroppedSnacs() << " dropped";
    const auto elapsed = taken.elapsed();
    std::vector<std::string> arrived;
    for (const auto& line : BotLines())
        arrived.push_back(line.text);
    EXPECT_EQ(arrived, sent);
    EXPECT_EQ(server.DroppedSnacs(), 0);
    EXPECT_TRUE(server.RateNotices().empty()) << "the server warned";
    std::cout << "300 lines: " << elapsed << " ms taken, " << expected
              << " ms by the class's average\n";
    EXPECT_GE(elapsed, expected * 9 / 10);
    EXPECT_LE(elapsed, expected * 13 / 10 + 500);
}

TEST_F(RatesServerTest, AnUnpacedFloodIsDroppedPastTheLimitAndThenDisconnected) {
    // Without a clock the client writes every line at once, as it used to.
    const int room = Enter(bot, "Scramble Bot", "secret1");
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
    EXPECT_EQ(server.SignedOn(), std::vector<std::string>{"scramblebot"}) << "BOS stays";
}

TEST_F(RatesServerTest, LinesCarryTheNarrowestCharsetAndIncomingUtf16IsDecoded) {
    const int room = Enter(bot, "Scramble Bot", "secret1");
    ASSERT_NE(room, 0);
    User player;
    ASSERT_NE(Enter(player, "Player Two", "pass2222"), 0);
    player.events.Take();
    struct Case {
        std::string text, charset;
    } cases[] = {
        {"plain", "us-ascii"},
        {HexToBytes("AB") + "Hi" + HexToBytes("BB"), "iso-8859-1"},
        {HexToBytes("93") + "ok" + HexToBytes("9420") + "5" + HexToBytes("80"), "unicode-2-0"}};
    for (const Case& c : cases) {
        bot.client.SendChat(room, c.text);
        ASSERT_TRUE(WaitFor([&] { return player.Count("ChatMessage(") > 0; }));
        EXPECT_EQ(BotLines().back().charset, c.charset);
        EXPECT_EQ(BotLines().back().text, c.text);
        EXPECT_EQ(player.events.Take(),
                  std::vector<std::string>{"ChatMessage(" +
                                           std::to_string(player.client.Chat().front().ChatIndex) +
                                           ", Scramble Bot, " + c.text + ")"});
    }
    // From a modern client: UTF-16, the character set after the text.
    bot.events.Take();
    server.PlayerSaysBlock("Word Games", "Ann Agram",
                           MakeTLV("0001", 2, HexToBytes("00C70061002000760061002020AC4E2D")) +
                               MakeTLV("0002", 2, "unicode-2-0") + MakeTLV("0003", 2, "en"));
    ASSERT_TRUE(WaitFor([&] { return bot.Count("ChatMessage(") > 0; }));
    EXPECT_EQ(bot.events.Take(),
              std::vector<std::string>{"ChatMessage(" + std::to_string(room) + ", Ann Agram, " +
                                       HexToBytes("C76120766120803F") + ")"});
}

TEST_F(RatesServerTest, OnlyASenderThatAsksHearsItsOwnLine) {
    const int room = Enter(bot, "Scramble Bot", "secret1");
    ASSERT_NE(room, 0);
    User player;
    ASSERT_NE(Enter(player, "Player Two", "pass2222"), 0);
    bot.events.Take();
    player.events.Take();
    // SendChat asks with TLV 0x0006; the same line without it is not echoed.
    bot.client.SendChat(room, "echo me");
    bot.client.SendPacket(room, 2,
                          HexToBytes("000E00050000000000050000000000000001"
                                     "0003") +
                              MakeTLV("0001", 2, "") +
                              MakeTLV("0005", 2,
                                      MakeTLV("0002", 2, "us-ascii") + MakeTLV("0003", 2, "en") +
                                          MakeTLV("0001", 2, "quiet")));
    ASSERT_TRUE(WaitFor([&] { return player.Count("ChatMessage(") == 2; }));
    QCoreApplication::processEvents();
    const std::string index = std::to_string(room);
    EXPECT_EQ(bot.events.Take(),
              std::vector<std::string>{"ChatMessage(" + index + ", Scramble Bot, echo me)"});
}

}  // namespace
