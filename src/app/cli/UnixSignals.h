#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace vorq {

/// Brings the first interrupt, termination or hangup signal to the event loop, unless the
/// program was started to ignore it. Another one ends the program as it would without this, so that
/// nobody waits for a program that hangs. At most one object at a time.
class UnixSignals final : public QObject {
    Q_OBJECT

  public:
    UnixSignals();
    ~UnixSignals() override;

  signals:
    void received(int number);

  private:
    void take();

    QSocketNotifier m_notifier;
};

} // namespace vorq
