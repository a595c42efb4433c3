// A timer that a test ticks by hand: Tick() fires only while enabled, so a
// ten-second pause is eleven calls, not ten seconds.
#pragma once

#include <functional>

#include "game/timer.h"

namespace testing_support {

class FakeTimer : public game::Timer {
  public:
    void SetEnabled(bool enabled) override {
        if (enabled && !enabled_) ++starts;
        enabled_ = enabled;
    }
    bool IsEnabled() const override { return enabled_; }
    void SetTick(std::function<void()> tick) override { tick_ = std::move(tick); }

    // One interval elapses; `count` of them in a row.
    void Tick(int count = 1) {
        for (int i = 0; i < count; ++i) {
            if (enabled_ && tick_) tick_();
        }
    }

    int starts = 0;  // how often the timer went from disabled to enabled

  private:
    bool enabled_ = false;
    std::function<void()> tick_;
};

}  // namespace testing_support
