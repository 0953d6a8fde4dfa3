#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QStringList>

#include <gtest/gtest.h>

namespace vorq {

/// A bus of its own, so that a test does not depend on the session it runs in.
class PrivateBus {
  public:
    PrivateBus() {
        m_daemon.start("dbus-daemon", {"--session", "--nofork", "--print-address=1"});
        if (!m_daemon.waitForStarted() || !m_daemon.waitForReadyRead())
            ADD_FAILURE() << "dbus-daemon does not start; install the package dbus";
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() {
        for (const QString& name : m_names)
            QDBusConnection::disconnectFromBus(name);
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    [[nodiscard]] const QString& address() const { return m_address; }
    /// One that is known by this name in the process.
    QDBusConnection connection(const QString& name) {
        m_names += name;
        return QDBusConnection::connectToBus(m_address, name);
    }

  private:
    QProcess m_daemon;
    QString m_address;
    QStringList m_names;
};

} // namespace vorq
