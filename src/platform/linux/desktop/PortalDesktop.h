#pragma once

#include "platform/DesktopLook.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>

#include <cstdint>

namespace vorq {

/// Asks the desktop, through its settings portal, what programs should look like, and hears of
/// changes. Without a portal nothing is ever known. Main thread only; nothing waits.
class PortalDesktop final : public QObject {
    Q_OBJECT

  public:
    explicit PortalDesktop(QDBusConnection bus = QDBusConnection::sessionBus());

    [[nodiscard]] const DesktopLook& look() const { return m_look; }

  signals:
    void changed();

    /// There is no portal, or one that does not know some of it.
    void isIncomplete();

  private slots:
    void settingChanged(const QString& area, const QString& key, const QDBusVariant& value);

  private:
    enum class Need : std::uint8_t { Asked, Welcome };

    // What is merely welcome may be missing.
    void ask(const QString& area, const QString& key, Need need = Need::Asked);
    void take(const QString& area, const QString& key, const QVariant& value);

    QDBusConnection m_bus;
    DesktopLook m_look;
};

} // namespace vorq
