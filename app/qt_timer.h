// A game timer on QTimer.
#pragma once

#include <QTimer>
#include <functional>

#include "game/timer.h"

class QtTimer : public game::Timer {
  public:
    explicit QtTimer(int intervalMs) {
        timer_.setInterval(intervalMs);
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            if (tick_) tick_();
        });
    }
    void SetEnabled(bool enabled) override {
        if (enabled == timer_.isActive()) return;
        if (enabled) {
            timer_.start();
        } else {
            timer_.stop();
        }
    }
    bool IsEnabled() const override { return timer_.isActive(); }
    void SetTick(std::function<void()> tick) override { tick_ = std::move(tick); }

  private:
    QTimer timer_;
    std::function<void()> tick_;
};
