#include "ui/reply/ReplyEvents.h"

#include "ui/native/ScreenReader.h"
#include "ui/reply/ReplyElements.h"
#include "ui/reply/ReplyView.h"

#include <utility>

namespace vorq {

// The text that the caret is in, once there is one; the reply before.
QAccessibleInterface* ReplyEvents::holder() const {
    ReplyElements& elements = m_view.elements();
    const bool isInText = m_view.selection().isCaretShown() && m_view.layout().count() > 0;
    return isInText ? elements.at(elements.keyAt(m_view.selection().cursor())) : elements.reply();
}

void ReplyEvents::tellFocus(QAccessibleInterface& element) {
    m_focused = QAccessible::uniqueId(&element);
    QAccessibleEvent event(&element, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}

void ReplyEvents::handleFocus() {
    if (ScreenReader::isListening()) tellFocus(*holder());
}

void ReplyEvents::handleGrowth() {
    if (!ScreenReader::isListening() || !m_view.hasActiveFocus()) return;
    QAccessibleInterface& element = *holder();
    if (QAccessible::uniqueId(&element) != m_focused) tellFocus(element);
}

void ReplyEvents::forget(const QList<QAccessible::Id>& ended) {
    if (ended.contains(m_focused)) m_focused = 0;
}

void ReplyEvents::handleCaretMove() {
    if (!ScreenReader::isListening()) return;
    QAccessibleInterface& element = *holder();
    if (m_view.hasActiveFocus() && QAccessible::uniqueId(&element) != m_focused) tellFocus(element);
    QAccessibleTextInterface* text = element.textInterface();
    if (!text) return;
    const bool hadSelection = std::exchange(m_hadSelection, m_view.hasSelection());
    if (hadSelection || m_hadSelection) {
        int start = 0;
        int end = 0;
        text->selection(0, &start, &end);
        QAccessibleTextSelectionEvent event(&element, start, end);
        event.setCursorPosition(text->cursorPosition());
        QAccessible::updateAccessibility(&event);
    }
    QAccessibleTextCursorEvent event(&element, text->cursorPosition());
    QAccessible::updateAccessibility(&event);
}

} // namespace vorq
