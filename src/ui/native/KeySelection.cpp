#include "ui/native/KeySelection.h"

#include <QKeyEvent>
#include <QKeySequence>
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

bool KeySelection::handle(QEvent& event) {
    return event.type() == QEvent::KeyPress && handleKey(static_cast<QKeyEvent&>(event));
}

bool KeySelection::handleKey(const QKeyEvent& event) {
    if (isComposing()) return false;
    if (event.matches(QKeySequence::SelectAll)) {
        QMetaObject::invokeMethod(target(), "selectAll");
        return true;
    }
    // A text that is only read has no cursor to begin at.
    if (isReadOnly()) return false;
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
    select(m_cursor.anchor(), m_cursor.position());
}

void KeySelection::updateCursor() {
    QTextDocument* text = document();
    if (text == nullptr) return;
    const int position = cursorPosition();
    const int anchor = fixedEnd();
    const bool isUpToDate = !m_cursor.isNull() && m_cursor.document() == text &&
                            m_cursor.position() == position && m_cursor.anchor() == anchor;
    if (isUpToDate) return;
    m_cursor = QTextCursor(text);
    m_cursor.setPosition(anchor);
    m_cursor.setPosition(position, QTextCursor::KeepAnchor);
}

} // namespace vorq
