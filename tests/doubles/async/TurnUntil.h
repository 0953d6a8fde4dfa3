#pragma once

#include <QCoreApplication>

#include <chrono>
#include <functional>

namespace vorq {

/// Turns the event loop until the condition holds. False if it did not within the time.
inline bool turnUntil(const std::function<bool()>& condition,
                      std::chrono::milliseconds limit = std::chrono::seconds(30)) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    }
    return true;
}

} // namespace vorq
