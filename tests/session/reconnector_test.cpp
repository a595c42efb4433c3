// The reconnector's schedule on a hand-ticked timer and a hand-set clock.
#include "session/reconnector.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/fake_timer.h"

namespace {

class ReconnectorTest : public ::testing::Test {
  protected:
    ReconnectorTest() {
        reconnector.SetTry([this] { tries.push_back(now); });
        reconnector.SetAbandon([this] { ++abandoned; });
        reconnector.Arm();
    }
    // Lets `seconds` pass, one tick per second; returns the number of tries
    // so far.
    std::size_t Pass(int seconds) {
        for (int i = 0; i < seconds; ++i) {
            ++now;
            timer.Tick();
        }
        return tries.size();
    }

    testing_support::FakeTimer timer;
    double uniform = 0.5;  // no jitter
    long long now = 1000;
    session::Reconnector reconnector{timer, [this] { return uniform; }, [this] { return now; }};
    std::vector<long long> tries;
    int abandoned = 0;
};

TEST_F(ReconnectorTest, DelaysDoubleFromAFewSecondsUpToTheCapAndRestartAfterRecovery) {
    std::vector<int> delays;
    for (int i = 0; i < 9; ++i) {
        const auto delay = reconnector.SessionLost(false);
        ASSERT_TRUE(delay);
        delays.push_back(*delay);
        EXPECT_EQ(Pass(*delay - 1), i + 0u) << "too early at " << i;
        ASSERT_EQ(Pass(1), i + 1u);
    }
    EXPECT_EQ(delays, (std::vector<int>{3, 6, 12, 24, 48, 96, 192, 240, 240}));

    // A second report of the same outage does not double the wait again.
    EXPECT_EQ(reconnector.SessionLost(false), 240);
    reconnector.Recovered();
    EXPECT_EQ(reconnector.SessionLost(false), 3);
}

TEST_F(ReconnectorTest, NeverMoreSignOnsInAMinuteThanTheServerAllows) {
    // A session that comes back and is dropped again at once, over and over.
    for (int i = 0; i < 40; ++i) {
        reconnector.Recovered();
        const auto delay = reconnector.SessionLost(false);
        ASSERT_TRUE(delay);
        Pass(*delay);
    }
    ASSERT_EQ(tries.size(), 40u);
    for (std::size_t first = 0; first < tries.size(); ++first) {
        std::size_t inMinute = 0;
        for (std::size_t i = first; i < tries.size() && tries[i] - tries[first] < 60; ++i)
            ++inMinute;
        EXPECT_LE(inMinute, static_cast<std::size_t>(session::Reconnector::kAttemptsPerMinute));
    }
    // Not slower than it needs to be: the 40 tries fit in about five minutes.
    EXPECT_LT(tries.back() - tries.front(), 5 * 60 + 30);
}

TEST_F(ReconnectorTest, ARateLimitedSignOnIsTriedAgainLaterARefusedPasswordNever) {
    const auto delay = reconnector.SignOnRefused(0x1D);
    ASSERT_TRUE(delay);
    EXPECT_GE(*delay, session::Reconnector::kRefusedDelay);
    EXPECT_EQ(Pass(*delay - 1), 0u);
    EXPECT_EQ(Pass(1), 1u);

    // Trying a refused password again only gets the account locked.
    reconnector.Reset();
    reconnector.Arm();
    EXPECT_FALSE(reconnector.SignOnRefused(0x05));
    EXPECT_NE(reconnector.StopReason().find("password was refused"), std::string::npos);
    EXPECT_EQ(Pass(session::Reconnector::kRefusedDelay + 1), 1u);
}

TEST_F(ReconnectorTest, SignedOffFromElsewhereCountsOnlyTheLastTenMinutes) {
    // Three times spread over more than ten minutes: still coming back.
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(reconnector.SessionLost(true)) << i;
        Pass(301);
        reconnector.Recovered();
    }
    // The third within ten minutes ends it.
    ASSERT_TRUE(reconnector.SessionLost(true));
    Pass(10);
    EXPECT_FALSE(reconnector.SessionLost(true));
}

TEST_F(ReconnectorTest, OperatorAndUnarmedSessionsGetNoTriesAndAHungTryIsGivenUp) {
    reconnector.SessionLost(false);
    reconnector.Reset();  // the operator signed off meanwhile
    EXPECT_EQ(Pass(60), 0u);

    reconnector.Arm();
    ASSERT_EQ(Pass(*reconnector.SessionLost(false)), 1u);
    Pass(session::Reconnector::kAttemptTimeout - 1);
    EXPECT_EQ(abandoned, 0);
    Pass(7);
    EXPECT_EQ(std::tuple(abandoned, tries.size()), std::tuple(1, 2u))
        << "given up, and tried again";
    reconnector.Recovered();
    Pass(100);
    EXPECT_EQ(std::tuple(abandoned, timer.IsEnabled()), std::tuple(1, false));
}

}  // namespace
