#include "ui/native/KeySelection.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QQuickTextDocument>
#include <QTextDocument>

#include <algorithm>
#include <array>

namespace vorq {
namespace {

struct Move {
    QKeySequence::StandardKey key;
    QTextCursor::MoveOperation operation;
};

constexpr std::array moves{
    Move{QKeySequence::SelectNextChar, QTextCursor::Right},
    Move{QKeySequence::SelectPreviousChar, QTextCursor::Left},
    Move{QKeySequence::SelectNextWord, QTextCursor::WordRight},
    Move{QKeySequence::SelectPreviousWord, QTextCursor::WordLeft},
    Move{QKeySequence::SelectNextLine, QTextCursor::Down},
    Move{QKeySequence::SelectPreviousLine, QTextCursor::Up},
    Move{QKeySequence::SelectStartOfLine, QTextCursor::StartOfLine},
    Move{QKeySequence::SelectEndOfLine, QTextCursor::EndOfLine},
    Move{QKeySequence::SelectStartOfBlock, QTextCursor::StartOfBlock},
    Move{QKeySequence::SelectEndOfBlock, QTextCursor::EndOfBlock},
    Move{QKeySequence::SelectStartOfDocument, QTextCursor::Start},
    Move{QKeySequence::SelectEndOfDocument, QTextCursor::End},
};

// Where a line is the last in its direction, its end is the furthest.
QTextCursor::MoveOperation furthest(QTextCursor::MoveOperation operation) {
    if (operation == QTextCursor::Down) return QTextCursor::End;
    if (operation == QTextCursor::Up) return QTextCursor::Start;
    return QTextCursor::NoMove;
}

} // namespace

void KeySelection::setTarget(QQuickItem* target) {
    if (m_target == target) return;
    if (m_target) m_target->removeEventFilter(this);
    m_target = target;
    m_cursor = {};
    if (m_target) m_target->installEventFilter(this);
    emit targetChanged();
}

bool KeySelection::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_target || event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    const bool isHandled = handleKey(static_cast<QKeyEvent&>(*event));
    if (isHandled) event->accept();
    return isHandled;
}

bool KeySelection::handleKey(const QKeyEvent& event) {
    if (m_target->property("inputMethodComposing").toBool()) return false;
    if (event.matches(QKeySequence::SelectAll)) {
        QMetaObject::invokeMethod(m_target, "selectAll");
        return true;
    }
    // A text that is only read has no cursor to begin at.
    if (m_target->property("readOnly").toBool()) return false;
    const auto* move =
        std::ranges::find_if(moves, [&](const Move& one) { return event.matches(one.key); });
    if (move == moves.end()) return false;
    extend(move->operation);
    return true;
}

void KeySelection::extend(QTextCursor::MoveOperation operation) {
    updateCursor();
    if (m_cursor.isNull()) return;
    if (!m_cursor.movePosition(operation, QTextCursor::KeepAnchor))
        m_cursor.movePosition(furthest(operation), QTextCursor::KeepAnchor);
    QMetaObject::invokeMethod(m_target, "select", Q_ARG(int, m_cursor.anchor()),
                              Q_ARG(int, m_cursor.position()));
}

void KeySelection::updateCursor() {
    const auto* document = m_target->property("textDocument").value<QQuickTextDocument*>();
    QTextDocument* text = document != nullptr ? document->textDocument() : nullptr;
    if (text == nullptr) return;
    const int start = m_target->property("selectionStart").toInt();
    const int end = m_target->property("selectionEnd").toInt();
    const int position = m_target->property("cursorPosition").toInt();
    const int anchor = position == start ? end : start;
    const bool isUpToDate = !m_cursor.isNull() && m_cursor.document() == text &&
                            m_cursor.position() == position && m_cursor.anchor() == anchor;
    if (isUpToDate) return;
    m_cursor = QTextCursor(text);
    m_cursor.setPosition(anchor);
    m_cursor.setPosition(position, QTextCursor::KeepAnchor);
}

} // namespace vorq
