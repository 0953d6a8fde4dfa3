#include "platform/linux/SystemClock.h"

#include <QTimer>

#include <ctime>

namespace vorq {

SystemClock::SystemClock() = default;
SystemClock::~SystemClock() = default;

Clock::Duration SystemClock::now() const {
    timespec time{};
    ::clock_gettime(CLOCK_BOOTTIME, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

QDateTime SystemClock::wallTime() const {
    return QDateTime::currentDateTimeUtc();
}

Clock::TimerId SystemClock::after(Duration delay, std::function<void()> callback) {
    using std::chrono::milliseconds;
    const TimerId id = ++m_lastId;
    auto* timer = new QTimer(&m_owner);
    m_timers.emplace(id, timer);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer, &QTimer::timeout, timer, [this, id, call = std::move(callback)] {
        const std::function<void()> due = call;
        cancel(id);
        due();
    });
    timer->start(std::max(std::chrono::ceil<milliseconds>(delay), milliseconds(0)));
    return id;
}

void SystemClock::cancel(TimerId timer) {
    const auto found = m_timers.find(timer);
    if (found == m_timers.end()) return;
    found->second->stop();
    found->second->deleteLater();
    m_timers.erase(found);
}

} // namespace vorq
