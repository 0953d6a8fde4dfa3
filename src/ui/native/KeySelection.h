#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QTextCursor>
#include <QtQml/qqmlregistration.h>

class QKeyEvent;

namespace vorq {

/// Selects text of a TextEdit by the keyboard, in place of the item itself, for the reason of
/// PointerSelection. Main thread only.
class KeySelection : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The TextEdit.
    Q_PROPERTY(QQuickItem* target READ target WRITE setTarget NOTIFY targetChanged)

  public:
    using QObject::QObject;

    [[nodiscard]] QQuickItem* target() const { return m_target; }
    void setTarget(QQuickItem* target);

  signals:
    void targetChanged();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    [[nodiscard]] bool handleKey(const QKeyEvent& event);
    void extend(QTextCursor::MoveOperation operation);
    void updateCursor();

    QPointer<QQuickItem> m_target;
    // Remembers the column of a selection that goes up or down past shorter lines.
    QTextCursor m_cursor;
};

} // namespace vorq
