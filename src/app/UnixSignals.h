#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace vorq {

/// Brings interrupt and termination signals to the event loop. At most one object at a time; a
/// second signal while the first is not taken up yet ends the program as it would without this.
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
