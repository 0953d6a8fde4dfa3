#pragma once

#include "platform/DesktopLook.h"

#include <QDBusConnection>
#include <QObject>
#include <QProcess>
#include <QStringList>

namespace vorq {

/// The look that the desktop stores in its GSettings, for desktops without a settings portal. Only
/// `prefersDark` is ever known, and nothing without the program `gsettings`. Main thread only;
/// nothing waits.
class GSettingsDesktop final : public QObject {
    Q_OBJECT

  public:
    explicit GSettingsDesktop(QDBusConnection bus = QDBusConnection::sessionBus());
    ~GSettingsDesktop() override;

    [[nodiscard]] const DesktopLook& look() const { return m_look; }

  signals:
    void changed();

  private slots:
    // Of the service that writes the settings: all keys that changed begin with the prefix.
    void settingsWritten(const QString& prefix, const QStringList& keys, const QString& tag);

  private:
    void read();
    void handleEnd();

    QDBusConnection m_bus;
    QProcess m_reader;
    bool m_isReadDue = false; // once more, since something changed while it was read
    DesktopLook m_look;
};

} // namespace vorq
