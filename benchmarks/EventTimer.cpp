#include "EventTimer.h"

#include <QEvent>

#include <ctime>

namespace vorq::bench {
namespace {

double milliseconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

} // namespace

bool EventTimer::notify(QObject* receiver, QEvent* event) {
    const bool isFrame = event->type() == QEvent::UpdateRequest;
    // A window is told to draw from within a timer of its own.
    if (m_depth > 0 && !isFrame) return QGuiApplication::notify(receiver, event);
    ++m_depth;
    const double wall = milliseconds(CLOCK_MONOTONIC);
    const double processor = milliseconds(CLOCK_THREAD_CPUTIME_ID);
    const bool result = QGuiApplication::notify(receiver, event);
    m_turns.push_back({milliseconds(CLOCK_MONOTONIC) - wall,
                       milliseconds(CLOCK_THREAD_CPUTIME_ID) - processor, isFrame});
    --m_depth;
    return result;
}

} // namespace vorq::bench
