#pragma once

#include "platform/Clock.h"

#include <QObject>

#include <unordered_map>

class QTimer;

namespace vorq {

/// The machine's clock, on Qt timers of millisecond precision.
class SystemClock final : public Clock {
  public:
    SystemClock();
    ~SystemClock() override;

    [[nodiscard]] Duration now() const override;
    [[nodiscard]] QDateTime wallTime() const override;
    TimerId after(Duration delay, std::function<void()> callback) override;
    void cancel(TimerId timer) override;

  private:
    QObject m_owner;
    TimerId m_lastId = 0;
    std::unordered_map<TimerId, QTimer*> m_timers;
};

} // namespace vorq
