#pragma once

#include "platform/Clock.h"

#include <QObject>

#include <map>
#include <memory>

class QSocketNotifier;

namespace vorq {

/// The machine's clock. Its timers count suspension of the machine, too: one that fell due
/// meanwhile fires at the resumption.
class SystemClock final : public Clock {
  public:
    SystemClock();
    ~SystemClock() override;

    [[nodiscard]] Duration now() const override;
    [[nodiscard]] QDateTime wallTime() const override;
    TimerId after(Duration delay, std::function<void()> callback) override;
    void cancel(TimerId timer) override;

  private:
    struct Timer {
        TimerId id;
        std::function<void()> callback;
    };

    void listen();
    void setAlarm();
    void fireDue();

    TimerId m_lastId = 0;
    std::multimap<Duration, Timer> m_timers;     // by their moment
    int m_alarm;                                 // a descriptor
    std::unique_ptr<QSocketNotifier> m_notifier; // null before the first timer
    std::shared_ptr<int> m_isAlive = std::make_shared<int>();
};

} // namespace vorq
