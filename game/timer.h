// A timer that fires repeatedly at a fixed interval while enabled. The
// window gives each game timer a Qt implementation; tests tick a fake by hand.
#pragma once

#include <functional>

namespace game {

class Timer {
  public:
    virtual ~Timer() = default;

    // Enabling a disabled timer starts a fresh interval; enabling one that is
    // already running changes nothing.
    virtual void SetEnabled(bool enabled) = 0;
    virtual bool IsEnabled() const = 0;
    // Called on every tick while enabled.
    virtual void SetTick(std::function<void()> tick) = 0;

    void Enable() { SetEnabled(true); }
    void Disable() { SetEnabled(false); }
};

}  // namespace game
