#pragma once

#include "app/instance/RunningInstance.h"

#include <QDBusConnection>

namespace vorq {

/// Reaches the Vorq that runs over a bus connection of its own and without an application object:
/// where one goes before the next comes, Qt forgets how windows are shown to assistive technology.
/// All calls on it wait for their answer.
class Courier {
  public:
    Courier() = default;
    ~Courier() { QDBusConnection::disconnectFromBus(connectionName); }
    Courier(const Courier&) = delete;
    Courier& operator=(const Courier&) = delete;

    [[nodiscard]] const QDBusConnection& bus() const { return m_bus; }
    RunningInstance& instance() { return m_instance; }

  private:
    static inline const QString connectionName = QStringLiteral("vorq-courier");

    QDBusConnection m_bus{
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName)};
    RunningInstance m_instance{m_bus};
};

} // namespace vorq
