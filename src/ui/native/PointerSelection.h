#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

class QMouseEvent;
class QTextDocument;

namespace vorq {

/// Selects text of a TextEdit with the left button, in place of the item itself. The item would
/// claim the PRIMARY selection for it, and the program that the user works in would lose its
/// highlight. Characters after a press, words after a double click, paragraphs after a triple
/// click. Main thread only.
class PointerSelection : public QObject {
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
    enum class Unit { Character, Word, Paragraph };
    // From one offset of the text to another.
    struct Span {
        int start = 0;
        int end = 0;
    };

    [[nodiscard]] bool handlePress(const QMouseEvent& event);
    [[nodiscard]] bool handleDoubleClick(const QMouseEvent& event);
    [[nodiscard]] bool handleMove(const QMouseEvent& event);
    [[nodiscard]] bool handleRelease(const QMouseEvent& event);

    [[nodiscard]] bool isComposing() const;
    [[nodiscard]] bool isTripleClick(const QMouseEvent& event) const;
    [[nodiscard]] QTextDocument* document() const;
    [[nodiscard]] int offsetAt(QPointF at) const;
    [[nodiscard]] Span unitAt(int offset) const;
    [[nodiscard]] int fixedEnd() const;
    void focusTarget();
    void begin(Unit unit, int offset);
    void extendTo(int offset);
    void select(int start, int end);

    QPointer<QQuickItem> m_target;
    Unit m_unit = Unit::Character;
    Span m_anchor;
    bool m_isSelecting = false;
    quint64 m_doubleClickTime = 0; // of the event, in milliseconds; 0 for none
    QPointF m_doubleClickPlace;
};

} // namespace vorq
