#include "ui/reply/ReplyKeys.h"

#include "ui/reply/ReplyView.h"

#include <QKeyEvent>

namespace vorq {
namespace {

// From a menu or another window the user comes back to where they were.
bool comesAndGoes(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

} // namespace

bool ReplyKeys::handleKey(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) return handleEnter();
    if (event.matches(QKeySequence::Copy)) {
        m_view.copy();
        return true;
    }
    if (event.matches(QKeySequence::SelectAll)) {
        m_view.selectAll();
        return true;
    }
    const std::optional<ReplyPosition> next = m_view.selection().positionAfter(event);
    if (!next) return false;
    const bool extends = event.modifiers().testFlag(Qt::ShiftModifier);
    m_view.moveCaret(extends ? m_view.selection().anchor() : *next, *next);
    return true;
}

// What is selected is asked about, and the link that the caret is in followed.
bool ReplyKeys::handleEnter() {
    PanelSelectionBridge* bridge = m_view.bridge();
    if (m_view.hasSelection())
        return bridge && bridge->isWatching(&m_view) && bridge->commitDeepen();
    const QString link = m_view.selection().linkAtCaret();
    if (!link.isEmpty()) emit m_view.linkActivated(link);
    return !link.isEmpty();
}

void ReplyKeys::handleFocus(Qt::FocusReason reason) {
    // A window that comes back finds things as they were.
    if (reason != Qt::ActiveWindowFocusReason)
        m_view.setVisualFocus(reason != Qt::MouseFocusReason);
    if (!comesAndGoes(reason)) m_view.setCaretShown(false);
}

void ReplyKeys::handleFocusLoss(Qt::FocusReason reason) {
    if (!comesAndGoes(reason)) m_view.setCaretShown(false);
    if (reason != Qt::ActiveWindowFocusReason) m_view.setVisualFocus(false);
}

} // namespace vorq
