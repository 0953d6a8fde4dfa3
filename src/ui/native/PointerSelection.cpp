#include "ui/native/PointerSelection.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QMouseEvent>
#include <QQuickTextDocument>
#include <QStyleHints>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace vorq {

void PointerSelection::setTarget(QQuickItem* target) {
    if (m_target == target) return;
    if (m_target) m_target->removeEventFilter(this);
    m_target = target;
    m_isSelecting = false;
    if (m_target) m_target->installEventFilter(this);
    emit targetChanged();
}

bool PointerSelection::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_target) return QObject::eventFilter(watched, event);
    bool isHandled = false;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        isHandled = handlePress(static_cast<QMouseEvent&>(*event));
        break;
    case QEvent::MouseButtonDblClick:
        isHandled = handleDoubleClick(static_cast<QMouseEvent&>(*event));
        break;
    case QEvent::MouseMove:
        isHandled = handleMove(static_cast<QMouseEvent&>(*event));
        break;
    case QEvent::MouseButtonRelease:
        isHandled = handleRelease(static_cast<QMouseEvent&>(*event));
        break;
    case QEvent::UngrabMouse:
        m_isSelecting = false;
        break;
    default:
        break;
    }
    if (isHandled) event->accept();
    return isHandled;
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
    m_target->setKeepMouseGrab(false);
    return true;
}

bool PointerSelection::isComposing() const {
    return m_target->property("inputMethodComposing").toBool();
}

bool PointerSelection::isTripleClick(const QMouseEvent& event) const {
    const QStyleHints& hints = *QGuiApplication::styleHints();
    const auto interval = static_cast<quint64>(hints.mouseDoubleClickInterval());
    const QPointF moved = event.position() - m_doubleClickPlace;
    return m_doubleClickTime != 0 && event.timestamp() - m_doubleClickTime <= interval &&
           moved.manhattanLength() < hints.startDragDistance();
}

QTextDocument* PointerSelection::document() const {
    const auto* document = m_target->property("textDocument").value<QQuickTextDocument*>();
    return document != nullptr ? document->textDocument() : nullptr;
}

int PointerSelection::offsetAt(QPointF at) const {
    int offset = 0;
    QMetaObject::invokeMethod(m_target, "positionAt", Q_RETURN_ARG(int, offset),
                              Q_ARG(qreal, at.x()), Q_ARG(qreal, at.y()));
    return offset;
}

PointerSelection::Span PointerSelection::unitAt(int offset) const {
    QTextDocument* text = document();
    if (m_unit == Unit::Character || text == nullptr) return {offset, offset};
    if (m_unit == Unit::Paragraph) {
        const QTextBlock block = text->findBlock(offset);
        return {block.position(), block.position() + block.length() - 1};
    }
    QTextCursor cursor(text);
    cursor.setPosition(offset);
    cursor.select(QTextCursor::WordUnderCursor);
    return {cursor.selectionStart(), cursor.selectionEnd()};
}

// That end of the present selection at which it does not grow.
int PointerSelection::fixedEnd() const {
    const int start = m_target->property("selectionStart").toInt();
    const int end = m_target->property("selectionEnd").toInt();
    return m_target->property("cursorPosition").toInt() == start ? end : start;
}

void PointerSelection::focusTarget() {
    const bool hadFocus = m_target->hasActiveFocus();
    m_target->forceActiveFocus(Qt::MouseFocusReason);
    // A press where the keyboard already is asks for one on the screen again.
    if (hadFocus && !m_target->property("readOnly").toBool())
        QGuiApplication::inputMethod()->show();
}

void PointerSelection::begin(Unit unit, int offset) {
    m_unit = unit;
    m_anchor = unitAt(offset);
    m_isSelecting = true;
    // What scrolls the text must not make a scroll of a selection.
    m_target->setKeepMouseGrab(true);
    select(m_anchor.start, m_anchor.end);
}

void PointerSelection::extendTo(int offset) {
    const Span reached = unitAt(offset);
    if (reached.start < m_anchor.start)
        select(m_anchor.end, reached.start);
    else
        select(m_anchor.start, std::max(m_anchor.end, reached.end));
}

void PointerSelection::select(int start, int end) {
    QMetaObject::invokeMethod(m_target, "select", Q_ARG(int, start), Q_ARG(int, end));
}

} // namespace vorq
