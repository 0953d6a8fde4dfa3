#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

class QTextDocument;

namespace vorq {

/// Selects text of a TextEdit or TextInput in place of the item itself. The item would claim the
/// PRIMARY selection for it, and the program that the user works in would lose its highlight. Main
/// thread only.
class TextSelecting : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    /// The TextEdit or TextInput.
    Q_PROPERTY(QQuickItem* target READ target WRITE setTarget NOTIFY targetChanged)

  public:
    using QObject::QObject;

    [[nodiscard]] QQuickItem* target() const { return m_target; }
    void setTarget(QQuickItem* target);

  signals:
    void targetChanged();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Whether an event of the target is done with by this.
    virtual bool handle(QEvent& event) = 0;
    /// The target is another one.
    virtual void forget() = 0;

    /// Null for one line of text, which is no document.
    [[nodiscard]] QTextDocument* document() const;
    [[nodiscard]] QString text() const { return m_target->property("text").toString(); }
    [[nodiscard]] bool isComposing() const;
    [[nodiscard]] bool isReadOnly() const { return m_target->property("readOnly").toBool(); }
    [[nodiscard]] int cursorPosition() const;
    /// The end of the selection at which it does not grow.
    [[nodiscard]] int fixedEnd() const;
    void select(int fixed, int moving);

  private:
    QPointer<QQuickItem> m_target;
};

} // namespace vorq
