#pragma once

#include <QString>
#include <QStringList>

namespace vorq {

/// A unit of the user's own systemd, by way of `systemctl`. Calls block for some seconds at most.
/// Any thread.
class SystemdUserUnit final {
  public:
    /// The name with its ending, and the folder for the user's configuration.
    SystemdUserUnit(QString name, QString configurationFolder);

    /// Whether the user has a systemd, and it knows the unit.
    [[nodiscard]] bool isKnown() const;

    /// Whether it starts with the session. Asks nobody.
    [[nodiscard]] bool isEnabled() const;

    [[nodiscard]] bool enable() const { return run(QStringLiteral("enable")); }
    [[nodiscard]] bool start() const { return run(QStringLiteral("start")); }
    [[nodiscard]] bool stop() const { return run(QStringLiteral("stop")); }

    /// Also where no systemd runs.
    [[nodiscard]] bool disable() const;

  private:
    [[nodiscard]] static bool hasManager();
    [[nodiscard]] bool run(const QString& command) const;
    [[nodiscard]] QString link() const;

    QString m_name;
    QString m_configurationFolder;
};

} // namespace vorq
