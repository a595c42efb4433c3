// When to sign on again after a session ended by itself: a backoff that
// starts at a few seconds and doubles up to a few minutes, with jitter so
// that many bots cut off together do not come back together, and never more
// sign-on attempts than a server allows from one address. Refusals that a
// retry cannot fix (a wrong password, a suspended name, being signed off from
// elsewhere again and again) stop the retries.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "game/timer.h"

namespace session {

class Reconnector {
  public:
    static constexpr int kFirstDelay = 3;         // seconds before the first try
    static constexpr int kLongestDelay = 240;     // the backoff's cap
    static constexpr int kRefusedDelay = 60;      // after "too soon" or a rate refusal
    static constexpr int kAttemptsPerMinute = 8;  // servers refuse beyond about ten
    static constexpr int kAttemptTimeout = 45;    // a try not back by then is given up
    static constexpr int kElsewhereLimit = 3;     // sign-offs from elsewhere ...
    static constexpr int kElsewhereWindow = 600;  // ... within this many seconds

    // `secondTimer` ticks once a second; `uniform` gives numbers in [0, 1)
    // for the jitter; `now` gives a monotonic time in seconds.
    Reconnector(game::Timer& secondTimer, std::function<double()> uniform,
                std::function<long long()> now);
    ~Reconnector();
    Reconnector(const Reconnector&) = delete;
    Reconnector& operator=(const Reconnector&) = delete;

    // Makes a try: sign on (and rejoin) again.
    void SetTry(std::function<void()> attempt) { attempt_ = std::move(attempt); }
    // Gives up a try that hung; the next one is scheduled right after.
    void SetAbandon(std::function<void()> abandon) { abandon_ = std::move(abandon); }

    // A session worth keeping is running (the operator signed on).
    void Arm();
    // The operator signed off or on by hand: no tries, counts forgotten.
    void Reset();
    bool Armed() const { return armed_; }

    // The session ended without the operator: the delay in seconds until the
    // next try, or nullopt when none comes (not armed, or stopped; then
    // StopReason() says why).
    std::optional<int> SessionLost(bool signedOnElsewhere);
    // The server refused a try with this sign-on error code.
    std::optional<int> SignOnRefused(int code);
    // Back where the session was: the next loss starts the backoff afresh.
    void Recovered();

    bool Waiting() const { return waiting_; }
    bool Attempting() const { return attempting_; }
    int SecondsLeft() const;
    const std::string& StopReason() const { return stopReason_; }

  private:
    void Tick();
    std::optional<int> Schedule(int minimum);
    void Stop(std::string reason);

    game::Timer& timer_;
    std::function<double()> uniform_;
    std::function<long long()> now_;
    std::function<void()> attempt_;
    std::function<void()> abandon_;

    bool armed_ = false;
    bool waiting_ = false;
    bool attempting_ = false;
    long long dueAt_ = 0;
    long long attemptStarted_ = 0;
    int failures_ = 0;                 // tries since the session was last recovered
    std::deque<long long> attempts_;   // start times within the last minute
    std::deque<long long> elsewhere_;  // sign-offs from elsewhere, recent ones
    std::string stopReason_;
};

}  // namespace session
