// The client's clock on Qt: a monotonic count and one single-shot timer.
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <climits>
#include <functional>

#include "oscar/clock.h"

class QtClock : public oscar::Clock {
  public:
    QtClock() {
        elapsed_.start();
        timer_.setSingleShot(true);
        // Rate-class gaps can be a few tens of milliseconds on a fast class.
        timer_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            // The wake-up may ask for the next one.
            auto wake = std::move(wake_);
            wake_ = nullptr;
            if (wake) wake();
        });
    }
    std::int64_t NowMs() const override { return elapsed_.elapsed(); }
    void WakeAfter(std::int64_t delayMs, std::function<void()> wake) override {
        wake_ = std::move(wake);
        timer_.start(static_cast<int>(std::clamp<std::int64_t>(delayMs, 0, INT_MAX)));
    }
    void CancelWake() override {
        timer_.stop();
        wake_ = nullptr;
    }

  private:
    QElapsedTimer elapsed_;
    QTimer timer_;
    std::function<void()> wake_;
};
