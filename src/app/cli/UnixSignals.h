#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace vorq {

/// Brings the first interrupt or termination signal to the event loop. Another one ends the program
/// as it would without this, so that nobody waits for a program that hangs. At most one object at a
/// time.
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
