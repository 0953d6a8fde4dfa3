#pragma once

#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickItem>

namespace vorq {

/// Has screen readers meet a text field by a `PasswordAccessible`. Main thread only.
class SecretField : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// Null for none.
    Q_PROPERTY(QQuickItem* target READ target WRITE setTarget NOTIFY targetChanged)

  public:
    using QObject::QObject;

    [[nodiscard]] QQuickItem* target() const { return m_target; }
    void setTarget(QQuickItem* target);

    [[nodiscard]] static bool isSecret(const QQuickItem& item);

  signals:
    void targetChanged();

  private:
    QPointer<QQuickItem> m_target;
};

} // namespace vorq
