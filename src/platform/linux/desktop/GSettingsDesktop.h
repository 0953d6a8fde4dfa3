#pragma once

#include "platform/DesktopLook.h"

#include <QDBusConnection>
#include <QHash>
#include <QObject>
#include <QProcess>
#include <QStringList>

namespace vorq {

/// The look that the desktop stores in its GSettings, for desktops without a settings portal or
/// with one that does not know everything. Nothing is known without the program `gsettings`. Main
/// thread only; nothing waits.
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
    void read(const QString& schema);
    void readNext();
    void handleEnd();

    QDBusConnection m_bus;
    QProcess m_reader;
    QStringList m_due; // schemas to read; the first is being read while the reader runs
    QHash<QByteArray, QByteArray> m_values; // by schema and key, parted by a blank
    DesktopLook m_look;
};

} // namespace vorq
