#include "game/random.h"

#include <gtest/gtest.h>

#include <map>

namespace game {
namespace {

TEST(RandomNumber, StaysWithinItsBoundsAndReachesEachValue) {
    RandomSource random(7);
    std::map<long long, int> seen;
    for (int i = 0; i < 6000; ++i) {
        const long long n = random.RandomNumber(6, 1);
        ASSERT_GE(n, 1);
        ASSERT_LE(n, 6);
        ++seen[n];
    }
    ASSERT_EQ(seen.size(), 6u);
    for (const auto& [value, count] : seen) {
        EXPECT_GT(count, 800) << value;
        EXPECT_LT(count, 1200) << value;
    }
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(random.RandomNumber(1, 1), 1);
        const long long n = random.RandomNumber(-3, -5);
        EXPECT_TRUE(n >= -5 && n <= -3) << n;
    }
}

TEST(RandomNumber, ASeedRepeatsItsDraws) {
    RandomSource a(42), b(42), c(43);
    bool differs = false;
    for (int i = 0; i < 50; ++i) {
        const long long x = a.RandomNumber(1000000, 1);
        EXPECT_EQ(x, b.RandomNumber(1000000, 1));
        differs = differs || x != c.RandomNumber(1000000, 1);
    }
    EXPECT_TRUE(differs);
}

}  // namespace
}  // namespace game
