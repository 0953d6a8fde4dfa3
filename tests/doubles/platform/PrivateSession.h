#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

namespace vorq {

/// A desktop session of its own for a test: an X server, a session bus and an empty home. What the
/// bus starts runs in it. Without the X server, what needs a display does not start.
class PrivateSession {
  public:
    enum class Display { Virtual, None };
    enum class Services { Installed, None };

    explicit PrivateSession(Display display = Display::Virtual,
                            Services services = Services::Installed);
    ~PrivateSession();
    PrivateSession(const PrivateSession&) = delete;
    PrivateSession& operator=(const PrivateSession&) = delete;

    /// Why the session did not come up, or an empty text.
    [[nodiscard]] const QString& problem() const { return m_problem; }
    [[nodiscard]] const QDBusConnection& bus() const { return m_bus; }
    [[nodiscard]] QString home() const { return m_folder.path() + "/home"; }

    /// Of the owner of a name on the bus; 0 if there is none.
    [[nodiscard]] qint64 processOf(const QString& name) const;

  private:
    QString startDisplay();
    QString startBus(Services services);
    [[nodiscard]] QString withoutServices() const;

    QTemporaryDir m_folder;
    QProcess m_display;
    QProcess m_daemon;
    QProcessEnvironment m_environment;
    QString m_problem;
    QDBusConnection m_bus;
};

} // namespace vorq
