#pragma once

#include "platform/ProcessId.h"
#include "platform/linux/atspi/AtSpiActiveWindows.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QObject>

#include <functional>
#include <optional>

namespace vorq {

/// Follows which application on the accessibility bus has the active window: by the events, each
/// confirmed by the window itself, and by asking all applications at the start. One that does not
/// answer in time has none. Never waits; on the thread of its connection.
class AtSpiWindowWatch final : public QObject {
    Q_OBJECT

  public:
    /// Windows of the process `own` are passed over, and so are those of the desktop itself.
    AtSpiWindowWatch(const QDBusConnection& bus, ProcessId own, QObject* parent = nullptr);
    ~AtSpiWindowWatch() override;

    /// Has applications tell of their windows, and asks those that are there.
    void begin();

    /// An application has left the bus.
    void forget(const QString& service);

    /// The process whose window is active; nothing while none is known to be.
    [[nodiscard]] std::optional<ProcessId> front() const { return m_front; }

  signals:
    /// To be looked up by front().
    void frontChanged();

  private slots:
    void windowActivated(const QDBusMessage& event);
    void windowDeactivated(const QDBusMessage& event);
    void stateChanged(const QDBusMessage& event);
    void applicationsChanged(const QDBusMessage& event);

  private:
    using Answer = std::function<void(const QDBusMessage&)>;

    void listen();
    void ask(const QDBusMessage& call, Answer answered);
    void survey();
    void survey(const QString& service);
    void confirm(const AtSpiRef& window);
    void confirm(const AtSpiRef& window, ProcessId process);
    void deactivate(const AtSpiRef& window);
    [[nodiscard]] bool isLeftOut(ProcessId process) const;
    void tell();

    QDBusConnection m_bus;
    ProcessId m_own;
    AtSpiActiveWindows m_windows;
    // Names on one bus are never given twice.
    QHash<QString, ProcessId> m_processes;
    std::optional<ProcessId> m_front;
};

} // namespace vorq
