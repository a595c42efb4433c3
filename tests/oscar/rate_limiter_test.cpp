// The rate classes as the server announces them, and the pacing they give.
#include "oscar/rate_limiter.h"

#include <gtest/gtest.h>

#include "oscar/encoding.h"

namespace {

using oscar::HexToBytes;
using oscar::RateLimiter;

// Two classes: 1 (window 80, clear 2500, alert 2000, limit 1500, disconnect
// 800, current 6000, max 6000) and 2, the chat class (window 80, clear 3000,
// alert 2000, limit 1500, disconnect 1000, current 6000, max 6000); class 1
// governs 0001/0002, class 2 governs 000E/0005.
const char* kClassesHex =
    "0002"
    "0001"
    "00000050000009C4000007D0000005DC0000032000001770"
    "00001770";
const char* kChatClassHex =
    "0002"
    "00000050"
    "00000BB8000007D0000005DC000003E80000177000001770";
const char* kMembersHex =
    "0001000100010002"
    "00020001000E0005";

std::string Classes(const std::string& tail1, const std::string& tail2) {
    return HexToBytes(std::string(kClassesHex) + tail1 + kChatClassHex + tail2 + kMembersHex);
}

TEST(RateLimiter, ReadsShortAndLongClassesAndRefusesBrokenLists) {
    for (const auto& [tail, what] : {std::pair<std::string, const char*>{"", "30-byte classes"},
                                     {"0000000000", "35-byte classes"}}) {
        RateLimiter rates;
        ASSERT_TRUE(rates.ReadClasses(Classes(tail, tail), 0)) << what;
        const oscar::RateClass* chat = rates.ClassOf(0x000E, 0x0005);
        ASSERT_NE(chat, nullptr) << what;
        EXPECT_EQ(chat->id, 2);
        EXPECT_EQ(chat->clear, 3000u);
        EXPECT_EQ(chat->disconnect, 1000u);
        EXPECT_EQ(rates.ClassOf(0x0001, 0x0002)->id, 1) << what;
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

}  // namespace
