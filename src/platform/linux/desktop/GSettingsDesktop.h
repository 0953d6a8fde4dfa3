#pragma once

#include "platform/DesktopLook.h"
#include "support/async/TaskSlot.h"

#include <QDBusConnection>
#include <QHash>
#include <QObject>
#include <QStringList>

namespace vorq {

/// The look that the desktop stores in its GSettings, for desktops without a settings portal or
/// with one that does not know everything. Nothing is known without the program `gsettings`. Main
/// thread only; nothing waits.
class GSettingsDesktop final : public QObject {
    Q_OBJECT

  public:
    explicit GSettingsDesktop(QDBusConnection bus = QDBusConnection::sessionBus());

    [[nodiscard]] const DesktopLook& look() const { return m_look; }

  signals:
    void changed();

  private slots:
    // Of the service that writes the settings: all keys that changed begin with the prefix.
    void settingsWritten(const QString& prefix, const QStringList& keys, const QString& tag);

  private:
    // What one reading of a schema gave.
    struct Stored {
        QHash<QByteArray, QByteArray> values;
        std::optional<LookColor> selection = std::nullopt;
    };

    void read(const QString& schema);
    static QCoro::Task<> readDue(GSettingsDesktop* self, std::stop_token stop);
    void merge(const QByteArray& schema, const Stored& stored);

    QDBusConnection m_bus;
    QStringList m_due; // schemas to read; the first is being read while the task runs
    QHash<QByteArray, QByteArray> m_values; // by schema and key, parted by a blank
    std::optional<LookColor> m_selection;   // of the theme
    DesktopLook m_look;
    TaskSlot m_reading;
};

} // namespace vorq
