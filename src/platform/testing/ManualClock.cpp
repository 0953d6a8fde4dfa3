#include "platform/testing/ManualClock.h"

#include <QCoreApplication>

#include <algorithm>

namespace vorq {

QDateTime ManualClock::wallTime() const {
    using namespace std::chrono;
    return QDateTime(QDate(2026, 1, 1), QTime(0, 0), Qt::UTC)
        .addMSecs(duration_cast<milliseconds>(m_now).count());
}

Clock::TimerId ManualClock::after(Duration delay, std::function<void()> callback) {
    const TimerId id = ++m_lastId;
    m_timers.emplace(m_now + std::max(delay, Duration{0}), Timer{id, std::move(callback)});
    return id;
}

void ManualClock::cancel(TimerId timer) {
    std::erase_if(m_timers, [timer](const auto& entry) { return entry.second.id == timer; });
}

void ManualClock::advance(Duration duration) {
    const Duration end = m_now + duration;
    settle();
    while (!m_timers.empty() && m_timers.begin()->first <= end) {
        const auto first = m_timers.begin();
        m_now = first->first;
        const std::function<void()> callback = std::move(first->second.callback);
        m_timers.erase(first);
        callback();
        settle();
    }
    m_now = end;
}

void ManualClock::passUnattended(Duration duration) {
    m_now += duration;
    while (!m_timers.empty() && m_timers.begin()->first <= m_now) {
        const auto first = m_timers.begin();
        const std::function<void()> callback = std::move(first->second.callback);
        m_timers.erase(first);
        callback();
    }
}

void ManualClock::settle() {
    // A posted call may post the next; a conversation needs a few hops at most.
    for (int round = 0; round < 32; ++round) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

} // namespace vorq
