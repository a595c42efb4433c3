// Runs the Qt event loop until a condition holds or a time limit passes.
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>
#include <functional>

namespace testing_support {

inline bool WaitFor(const std::function<bool()>& condition, int milliseconds = 5000) {
    QDeadlineTimer deadline(milliseconds);
    while (!condition()) {
        if (deadline.hasExpired()) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(1);
    }
    return true;
}

}  // namespace testing_support
