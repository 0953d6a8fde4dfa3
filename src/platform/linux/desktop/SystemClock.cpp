#include "platform/linux/desktop/SystemClock.h"

#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <sys/timerfd.h>
#include <unistd.h>
#include <utility>

namespace vorq {
namespace {

timespec timespecOf(Clock::Duration moment) {
    const auto whole = std::chrono::floor<std::chrono::seconds>(moment);
    return {.tv_sec = whole.count(), .tv_nsec = (moment - whole).count()};
}

} // namespace

SystemClock::SystemClock() : m_alarm(::timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC | TFD_NONBLOCK)) {
    if (m_alarm < 0) qFatal("Vorq has no clock: %s", std::strerror(errno));
}

SystemClock::~SystemClock() {
    m_notifier.reset();
    ::close(m_alarm);
}

Clock::Duration SystemClock::now() const {
    timespec time{};
    ::clock_gettime(CLOCK_BOOTTIME, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

QDateTime SystemClock::wallTime() const {
    return QDateTime::currentDateTimeUtc();
}

Clock::TimerId SystemClock::after(Duration delay, std::function<void()> callback) {
    if (!m_notifier) listen();
    const TimerId id = ++m_lastId;
    m_timers.emplace(now() + std::max(delay, Duration{0}), Timer{id, std::move(callback)});
    setAlarm();
    return id;
}

void SystemClock::cancel(TimerId timer) {
    const bool isFound =
        std::erase_if(m_timers, [timer](const auto& entry) { return entry.second.id == timer; });
    if (isFound) setAlarm();
}

void SystemClock::listen() {
    m_notifier = std::make_unique<QSocketNotifier>(m_alarm, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this] { fireDue(); });
}

// At the moment of the first timer; a moment of zero would mean no alarm.
void SystemClock::setAlarm() {
    itimerspec alarm{};
    if (!m_timers.empty())
        alarm.it_value = timespecOf(std::max(m_timers.begin()->first, Duration{1}));
    ::timerfd_settime(m_alarm, TFD_TIMER_ABSTIME, &alarm, nullptr);
}

// Timers that are added meanwhile get a turn of the event loop of their own. A callback may run an
// event loop, and end the clock.
void SystemClock::fireDue() {
    const std::weak_ptr<int> isAlive = m_isAlive;
    const Duration moment = now();
    const TimerId newest = m_lastId;
    while (!isAlive.expired()) {
        const auto due = std::ranges::find_if(
            m_timers, [newest](const auto& entry) { return entry.second.id <= newest; });
        if (due == m_timers.end() || due->first > moment) break;
        const std::function<void()> callback = std::move(due->second.callback);
        m_timers.erase(due);
        setAlarm();
        callback();
    }
    if (!isAlive.expired()) setAlarm();
}

} // namespace vorq
