#include "session/reconnector.h"

#include <algorithm>
#include <cmath>

namespace session {

Reconnector::Reconnector(game::Timer& secondTimer, std::function<double()> uniform,
                         std::function<long long()> now)
    : timer_(secondTimer), uniform_(std::move(uniform)), now_(std::move(now)) {
    timer_.SetTick([this] { Tick(); });
}

Reconnector::~Reconnector() {
    timer_.Disable();
    timer_.SetTick(nullptr);
}

void Reconnector::Arm() {
    armed_ = true;
    stopReason_.clear();
}

void Reconnector::Reset() {
    armed_ = false;
    waiting_ = false;
    attempting_ = false;
    failures_ = 0;
    elsewhere_.clear();
    stopReason_.clear();
    timer_.Disable();
}

void Reconnector::Stop(std::string reason) {
    Reset();
    stopReason_ = std::move(reason);
}

std::optional<int> Reconnector::SessionLost(bool signedOnElsewhere) {
    if (!armed_) return std::nullopt;
    if (signedOnElsewhere) {
        const long long now = now_();
        elsewhere_.push_back(now);
        while (!elsewhere_.empty() && now - elsewhere_.front() >= kElsewhereWindow) {
            elsewhere_.pop_front();
        }
        if (static_cast<int>(elsewhere_.size()) >= kElsewhereLimit) {
            Stop("Signed on from elsewhere three times within ten minutes: not signing on again.");
            return std::nullopt;
        }
    }
    return Schedule(0);
}

std::optional<int> Reconnector::SignOnRefused(int code) {
    if (!armed_) return std::nullopt;
    switch (code) {
        case 0x01:
        case 0x04:
            Stop("The server does not know this screen name: not signing on again.");
            return std::nullopt;
        case 0x05:
            Stop("The password was refused: not signing on again.");
            return std::nullopt;
        case 0x08:
        case 0x11:
            Stop("This screen name is suspended or deleted: not signing on again.");
            return std::nullopt;
        case 0x18:
        case 0x1D:
            return Schedule(kRefusedDelay);
        default:
            return Schedule(0);
    }
}

void Reconnector::Recovered() {
    attempting_ = false;
    failures_ = 0;
    if (!waiting_) timer_.Disable();
}

int Reconnector::SecondsLeft() const {
    return waiting_ ? static_cast<int>(std::max(0LL, dueAt_ - now_())) : 0;
}

std::optional<int> Reconnector::Schedule(int minimum) {
    // A second report of the same outage (the room's connection, then the
    // session's) reschedules the same try instead of counting another one.
    if (waiting_ && failures_ > 0) --failures_;
    // Doubling from the first delay, capped; the jitter spreads it over
    // 75 % to 125 % of that, within the cap.
    const int shift = std::min(failures_, 16);
    const long long nominal = std::min<long long>(kLongestDelay, kFirstDelay * (1LL << shift));
    const double factor = 0.75 + 0.5 * std::clamp(uniform_(), 0.0, 1.0);
    long long delay = std::llround(static_cast<double>(nominal) * factor);
    delay = std::clamp<long long>(delay, 1, kLongestDelay);
    delay = std::max<long long>(delay, minimum);
    // Never more tries within a minute than the server takes from one address.
    const long long now = now_();
    while (!attempts_.empty() && now - attempts_.front() >= 60)
        attempts_.pop_front();
    if (static_cast<int>(attempts_.size()) >= kAttemptsPerMinute) {
        delay = std::max(delay, attempts_.front() + 60 - now);
    }
    ++failures_;
    attempting_ = false;
    waiting_ = true;
    dueAt_ = now + delay;
    timer_.Enable();
    return static_cast<int>(delay);
}

void Reconnector::Tick() {
    const long long now = now_();
    if (attempting_) {
        if (now - attemptStarted_ < kAttemptTimeout) return;
        attempting_ = false;
        if (abandon_) abandon_();
        if (!waiting_ && armed_) Schedule(0);
        return;
    }
    if (!waiting_) {
        timer_.Disable();
        return;
    }
    if (now < dueAt_) return;
    waiting_ = false;
    attempting_ = true;
    attemptStarted_ = now;
    attempts_.push_back(now);
    if (attempt_) attempt_();
}

}  // namespace session
