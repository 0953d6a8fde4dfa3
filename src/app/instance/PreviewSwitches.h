#pragma once

#include "areas/Previews.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QPointer>
#include <QStringList>

namespace vorq {

/// Lets another start of the program see and switch previews: the interface com.vorq.desk.Previews
/// beside that of the application. Main thread only.
class PreviewSwitches final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.vorq.desk.Previews")

  public:
    static inline const QString interface = QStringLiteral("com.vorq.desk.Previews");

    /// The object is the one that is on the bus.
    PreviewSwitches(const QDBusConnection& bus, QObject* object);

    /// The previews that are switched from now on, while they are there.
    void serve(Previews& previews) { m_previews = &previews; }

  public slots:
    /// The names of those that are on.
    QStringList Open();

    /// Answered by an error with a sentence for a name that there is not, and where the settings
    /// do not keep the switch.
    void Switch(const QString& name, bool isOn, const QDBusMessage& message);

  private:
    [[nodiscard]] std::expected<void, QString> apply(const QString& name, bool isOn);

    QDBusConnection m_bus;
    QPointer<Previews> m_previews;
};

} // namespace vorq
