#include "ui/native/PointerSelection.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QMouseEvent>
#include <QStyleHints>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace vorq {

bool PointerSelection::handle(QEvent& event) {
    switch (event.type()) {
    case QEvent::MouseButtonPress:
        return handlePress(static_cast<QMouseEvent&>(event));
    case QEvent::MouseButtonDblClick:
        return handleDoubleClick(static_cast<QMouseEvent&>(event));
    case QEvent::MouseMove:
        return handleMove(static_cast<QMouseEvent&>(event));
    case QEvent::MouseButtonRelease:
        return handleRelease(static_cast<QMouseEvent&>(event));
    case QEvent::UngrabMouse:
        m_isSelecting = false;
        return false;
    default:
        return false;
    }
}

bool PointerSelection::handlePress(const QMouseEvent& event) {
    // While the user composes, a press belongs to the input method, which the item asks.
    if (event.button() != Qt::LeftButton || isComposing()) return false;
    const int offset = offsetAt(event.position());
    if (isTripleClick(event)) {
        begin(Unit::Paragraph, offset);
    } else if (event.modifiers().testFlag(Qt::ShiftModifier)) {
        const int fixed = fixedEnd();
        begin(Unit::Character, fixed);
        extendTo(offset);
    } else {
        begin(Unit::Character, offset);
    }
    m_doubleClickTime = 0;
    focusTarget();
    return true;
}

bool PointerSelection::handleDoubleClick(const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton || isComposing()) return false;
    begin(Unit::Word, offsetAt(event.position()));
    m_doubleClickTime = event.timestamp();
    m_doubleClickPlace = event.position();
    return true;
}

bool PointerSelection::handleMove(const QMouseEvent& event) {
    if (!m_isSelecting) return false;
    extendTo(offsetAt(event.position()));
    return true;
}

bool PointerSelection::handleRelease(const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton || !m_isSelecting) return false;
    m_isSelecting = false;
    target()->setKeepMouseGrab(false);
    return true;
}

bool PointerSelection::isTripleClick(const QMouseEvent& event) const {
    const QStyleHints& hints = *QGuiApplication::styleHints();
    const auto interval = static_cast<quint64>(hints.mouseDoubleClickInterval());
    const QPointF moved = event.position() - m_doubleClickPlace;
    return m_doubleClickTime != 0 && event.timestamp() - m_doubleClickTime <= interval &&
           moved.manhattanLength() < hints.startDragDistance();
}

// What an input method asks of both kinds of item; it takes nothing for no place.
int PointerSelection::offsetAt(QPointF at) const {
    constexpr QPointF inside(0.01, 0.01);
    QVariant offset;
    QMetaObject::invokeMethod(target(), "inputMethodQuery", Q_RETURN_ARG(QVariant, offset),
                              Q_ARG(Qt::InputMethodQuery, Qt::ImCursorPosition),
                              Q_ARG(QVariant, QVariant::fromValue(at.isNull() ? inside : at)));
    return offset.toInt();
}

PointerSelection::Span PointerSelection::unitAt(int offset) const {
    if (m_unit == Unit::Character) return {offset, offset};
    QTextDocument line;
    QTextDocument* whole = document();
    if (whole == nullptr) {
        line.setPlainText(text());
        whole = &line;
    }
    if (m_unit == Unit::Paragraph) {
        const QTextBlock block = whole->findBlock(offset);
        return {block.position(), block.position() + block.length() - 1};
    }
    QTextCursor cursor(whole);
    cursor.setPosition(offset);
    cursor.select(QTextCursor::WordUnderCursor);
    return {cursor.selectionStart(), cursor.selectionEnd()};
}

void PointerSelection::focusTarget() {
    const bool hadFocus = target()->hasActiveFocus();
    target()->forceActiveFocus(Qt::MouseFocusReason);
    // A press where the keyboard already is asks for one on the screen again.
    if (hadFocus && !isReadOnly()) QGuiApplication::inputMethod()->show();
}

void PointerSelection::begin(Unit unit, int offset) {
    m_unit = unit;
    m_anchor = unitAt(offset);
    m_isSelecting = true;
    // What scrolls the text must not make a scroll of a selection.
    target()->setKeepMouseGrab(true);
    select(m_anchor.start, m_anchor.end);
}

void PointerSelection::extendTo(int offset) {
    const Span reached = unitAt(offset);
    if (reached.start < m_anchor.start)
        select(m_anchor.end, reached.start);
    else
        select(m_anchor.start, std::max(m_anchor.end, reached.end));
}

} // namespace vorq
