// What the client needs of time: a millisecond count that only goes forward
// and one wake-up call, for the send queues and the keep-alives. The program
// uses a Qt timer; tests move a fake clock by hand.
#pragma once

#include <cstdint>
#include <functional>

namespace oscar {

class Clock {
  public:
    virtual ~Clock() = default;
    virtual std::int64_t NowMs() const = 0;
    // Calls `wake` once, `delayMs` from now; a new call replaces a pending one.
    virtual void WakeAfter(std::int64_t delayMs, std::function<void()> wake) = 0;
    virtual void CancelWake() = 0;
};

}  // namespace oscar
