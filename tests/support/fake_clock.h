// A clock a test moves by hand: Advance runs every wake-up that falls due on
// the way, at its own time.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "oscar/clock.h"

namespace testing_support {

class FakeClock : public oscar::Clock {
  public:
    std::int64_t NowMs() const override { return now_; }
    void WakeAfter(std::int64_t delayMs, std::function<void()> wake) override {
        due_ = now_ + delayMs;
        wake_ = std::move(wake);
    }
    void CancelWake() override { due_.reset(); }

    void Advance(std::int64_t ms) {
        const std::int64_t until = now_ + ms;
        // Bounded: a wake-up that keeps asking for "now" cannot spin forever.
        for (int fired = 0; due_ && *due_ <= until && fired < 100000; ++fired) {
            now_ = *due_;
            due_.reset();
            wake_();
        }
        now_ = until;
    }

  private:
    std::int64_t now_ = 1000;
    std::optional<std::int64_t> due_;
    std::function<void()> wake_;
};

}  // namespace testing_support
