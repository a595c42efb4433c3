// The rate classes as the server announces them, the pacing they give, and
// the send queue and the keep-alives on fake sockets and fake time.
#include <gtest/gtest.h>

#include "oscar/rate_limiter.h"
#include "support/client_fixture.h"
#include "support/fake_clock.h"

namespace oscar {
namespace {

using namespace std::string_literals;
using testing_support::EnterFakeRoom;
using testing_support::FakeClock;
using testing_support::SnacFrame;

// Two classes: 1 (window 80, clear 2500, alert 2000, limit 1500, disconnect
// 800, current 6000, max 6000) and 2, the chat class (window 80, clear 3000,
// alert 2000, limit 1500, disconnect 1000, current 6000, max 6000); class 1
// governs 0001/0002, class 2 governs 000E/0005. Each list: the count, then
// per class its id, window, levels and (in the long form) five more bytes;
// then per class its id, member count and members.
const char* kClassesHex = "0002000100000050000009C4000007D0000005DC000003200000177000001770";
const char* kChatClassHex = "00020000005000000BB8000007D0000005DC000003E80000177000001770";
const char* kMembersHex = "000100010001000200020001000E0005";

std::string Classes(const std::string& tail1, const std::string& tail2) {
    return HexToBytes(std::string(kClassesHex) + tail1 + kChatClassHex + tail2 + kMembersHex);
}

TEST(RateLimiter, ReadsShortAndLongClassesAndRefusesBrokenLists) {
    for (const auto& [tail, what] : {std::pair<std::string, const char*>{"", "30-byte classes"},
                                     {"0000000000", "35-byte classes"}}) {
        RateLimiter rates;
        ASSERT_TRUE(rates.ReadClasses(Classes(tail, tail), 0)) << what;
        const RateClass* chat = rates.ClassOf(0x000E, 0x0005);
        ASSERT_NE(chat, nullptr) << what;
        EXPECT_EQ(
            std::tuple(chat->id, chat->clear, chat->disconnect, rates.ClassOf(0x0001, 0x0002)->id),
            std::tuple(2, 3000u, 1000u, 1))
            << what;
        // A SNAC no class lists never waits.
        EXPECT_EQ(rates.ClassOf(0x0004, 0x0006), nullptr);
        EXPECT_EQ(rates.Wait(0x0004, 0x0006, 0), 0);
    }
    RateLimiter rates;
    ASSERT_TRUE(rates.ReadClasses(Classes("", ""), 0));
    for (const std::string& broken : {std::string(), HexToBytes("0005"),
                                      Classes("", "").substr(0, 68), Classes("", "") + "x"}) {
        EXPECT_FALSE(rates.ReadClasses(broken, 0));
    }
    // What was read before stays.
    EXPECT_NE(rates.ClassOf(0x000E, 0x0005), nullptr);
}

TEST(RateLimiter, AWarningHoldsTheClassAtTheClearLevelUntilItClears) {
    RateLimiter rates;
    ASSERT_TRUE(rates.ReadClasses(Classes("", ""), 0));
    // A change (2: warning, 4: clear) of class 2 with the server's average.
    const auto change = [](const char* code, const char* average) {
        return HexToBytes(std::string(code) + "000200000050" + "00000BB8000007D0000005DC000003E8" +
                          average + "00001770");
    };
    rates.ReadChange(change("0002", "00000A28"), 5000);
    double average = 0;
    rates.ClassOf(0x000E, 0x0005, &average);
    EXPECT_EQ(average, 2600.0);
    // Above the floor (2500), yet a warned class waits the clear level.
    EXPECT_EQ(rates.Wait(0x000E, 0x0005, 5000), 3000);
    rates.ReadChange(change("0004", "00001770"), 6000);
    EXPECT_EQ(rates.Wait(0x000E, 0x0005, 6000), 0);
}

class SendQueueTest : public testing_support::ClientTest {
  protected:
    SendQueueTest() {
        client.SetClock(&clock);
        client.SetQueueObserver([this](int index, std::size_t waiting) {
            observed.push_back(std::to_string(index) + ":" + std::to_string(waiting));
        });
    }
    ~SendQueueTest() override { client.SetClock(nullptr); }

    // The room on index 2 with one rate class for chat lines: window 10,
    // clear 3000, alert 2000, limit 1500, disconnect 1000, current and max
    // 6000 (30-byte class, members 000E/0005).
    void EnterRoomWithChatClass() {
        EnterFakeRoom(sockets, client, 2);
        sockets.Deliver(2, SnacFrame("000100070000000000000001"
                                     "00020000000A00000BB8000007D0000005DC000003E80000177000001770"
                                     "00020001000E0005"));
        sockets.written.clear();
    }

    // The texts of the chat lines written on `index` so far, in order, and
    // whether their sequence numbers ran on one by one.
    std::vector<std::string> LinesWritten(int index, bool* consecutive = nullptr) {
        std::vector<std::string> texts;
        int last = -1;
        if (consecutive) *consecutive = true;
        for (const auto& [i, frame] : sockets.written) {
            if (i != index || frame.size() < 16 || SnacKey(frame.substr(6)) != "000E0005") continue;
            const int sequence = *ReadWord(frame.substr(2));
            if (consecutive && last >= 0 && sequence != last + 1) *consecutive = false;
            last = sequence;
            texts.push_back(frame.substr(frame.size() - 7));
        }
        return texts;
    }

    FakeClock clock;
    std::vector<std::string> observed;
};

TEST_F(SendQueueTest, LinesWaitForTheirRateClassAndGoInOrder) {
    SignOn();
    EnterRoomWithChatClass();
    std::vector<std::string> sent;
    for (int i = 10; i < 22; ++i) {
        sent.push_back("line " + std::to_string(i));
        client.SendChat(2, sent.back());
    }
    // 6000 * 0.9^n stays above 2777.8 for n = 0..7: eight lines go at once,
    // the ninth needs 10 * 2500 - 9 * 6000 * 0.9^8 = 1754.8 ms.
    EXPECT_EQ(std::tuple(LinesWritten(2).size(), client.Waiting(2), observed.front()),
              std::tuple(8u, 4u, "2:1"s));
    clock.Advance(1754);
    EXPECT_EQ(LinesWritten(2).size(), 8u);
    clock.Advance(1);
    EXPECT_EQ(LinesWritten(2).size(), 9u);
    clock.Advance(20000);
    bool consecutive = false;
    EXPECT_EQ(LinesWritten(2, &consecutive), sent);
    EXPECT_TRUE(consecutive);

    // A warning (with an optional block before it, as servers send it):
    // class 2 at 1900. The next line waits the clear level.
    sockets.written.clear();
    sockets.Deliver(2,
                    SnacFrame("0001000A8000000000000006000100020003"
                              "000200020000000A00000BB8000007D0000005DC000003E80000076C00001770"));
    client.SendChat(2, "later 1");
    clock.Advance(2999);
    EXPECT_TRUE(LinesWritten(2).empty());
    clock.Advance(1);
    EXPECT_EQ(LinesWritten(2), std::vector<std::string>{"later 1"});

    // A lost connection takes its queue along.
    client.SendChat(2, "later 2");
    ASSERT_EQ(client.Waiting(2), 1u);
    sockets.Fail(2);
    EXPECT_EQ(std::tuple(client.Waiting(2), observed.back()), std::tuple(0u, "2:0"s));
    clock.Advance(100000);
    EXPECT_EQ(LinesWritten(2), std::vector<std::string>{"later 1"});
}

TEST_F(SendQueueTest, IdleConnectionsGetAnEmptyChannelFiveFrameEveryMinute) {
    SignOn();
    EnterRoomWithChatClass();
    client.SendChat(2, "a line");  // the room's last write: 30 s after the BOS's
    clock.Advance(30000);
    client.SendChat(2, "b line");
    sockets.written.clear();

    const auto keepAlives = [this](int index) {
        int count = 0;
        for (const auto& [i, frame] : sockets.written) {
            // '*', channel 5, any sequence number, length 0.
            if (i == index && frame.size() == 6 && frame[1] == 5 && frame.substr(4) == "\0\0"s)
                ++count;
        }
        return count;
    };
    clock.Advance(29999);
    EXPECT_EQ(keepAlives(0), 0);
    clock.Advance(1);
    EXPECT_EQ(std::pair(keepAlives(0), keepAlives(2)), std::pair(1, 0));
    clock.Advance(30000);
    EXPECT_EQ(keepAlives(2), 1);
    // A closed connection gets none; the others go on every minute.
    client.CloseSock(2);
    sockets.written.clear();
    clock.Advance(60000 * 3);
    EXPECT_EQ(std::pair(keepAlives(0), keepAlives(2)), std::pair(3, 0));
}

}  // namespace
}  // namespace oscar
