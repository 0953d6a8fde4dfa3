#pragma once

#include "ui/native/TextSelecting.h"

class QMouseEvent;

namespace vorq {

/// Selects text of a TextEdit or TextInput with the left button, in place of the item itself.
/// Characters after a press, words after a double click, paragraphs after a triple click. Main
/// thread only.
class PointerSelection : public vorq::TextSelecting {
    Q_OBJECT
    QML_ELEMENT

  public:
    using TextSelecting::TextSelecting;

  protected:
    bool handle(QEvent& event) override;
    void forget() override { m_isSelecting = false; }

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

    [[nodiscard]] bool isTripleClick(const QMouseEvent& event) const;
    [[nodiscard]] int offsetAt(QPointF at) const;
    [[nodiscard]] Span unitAt(int offset) const;
    void focusTarget();
    void begin(Unit unit, int offset);
    void extendTo(int offset);

    Unit m_unit = Unit::Character;
    Span m_anchor;
    bool m_isSelecting = false;
    quint64 m_doubleClickTime = 0; // of the event, in milliseconds; 0 for none
    QPointF m_doubleClickPlace;
};

} // namespace vorq
