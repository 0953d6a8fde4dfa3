#include "ui/reply/ReplySelection.h"

#include "ui/native/ScreenReader.h"

#include <QKeyEvent>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vorq {
namespace {

// The word that a character of a text belongs to; between words, the space.
BlockRange wordOf(const QString& text, qsizetype character) {
    QTextBoundaryFinder words(QTextBoundaryFinder::Word, text);
    words.setPosition(std::min(character + 1, text.size()));
    const qsizetype from = std::max<qsizetype>(0, words.toPreviousBoundary());
    const qsizetype to = words.toNextBoundary();
    return {from, to < 0 ? text.size() : to};
}

// By words it goes past their ends, and back to their beginnings; -1 where the text ends.
qsizetype stepped(const QString& text, qsizetype offset, bool isForward, bool byWord) {
    QTextBoundaryFinder finder(byWord ? QTextBoundaryFinder::Word : QTextBoundaryFinder::Grapheme,
                               text);
    finder.setPosition(offset);
    const auto end = isForward ? QTextBoundaryFinder::EndOfItem : QTextBoundaryFinder::StartOfItem;
    qsizetype next = offset;
    do
        next = isForward ? finder.toNextBoundary() : finder.toPreviousBoundary();
    while (byWord && next > 0 && next < text.size() && !finder.boundaryReasons().testFlag(end));
    return next;
}

bool isUnseen(QStringView text) {
    return !text.isEmpty() && std::ranges::all_of(text, [](QChar character) {
        return character == ReplyStyle::isolateStart || character == ReplyStyle::isolateEnd;
    });
}

// Where a position is once the blocks have changed; nothing if its block is gone.
std::optional<ReplyPosition> movedWith(const ReplyBlocks::Change& change, ReplyPosition at) {
    if (at.block >= change.row + change.removed)
        at.block += change.added - change.removed;
    else if (at.block >= change.row + change.added)
        return std::nullopt;
    return at;
}

} // namespace

ReplyRange ReplySelection::range() const {
    return {std::min(m_anchor, m_cursor), std::max(m_anchor, m_cursor)};
}

std::optional<QString> ReplySelection::text() const {
    const ReplyRange selected = range();
    if (selected.isEmpty() || selected.to > m_layout.end()) return std::nullopt;
    return m_layout.written(selected);
}

bool ReplySelection::select(ReplyPosition anchor, ReplyPosition cursor) {
    const bool isElsewhere = m_anchor != anchor || m_cursor != cursor;
    m_anchor = anchor;
    m_cursor = cursor;
    return isElsewhere;
}

bool ReplySelection::setCaretShown(bool isShown) {
    return std::exchange(m_isCaretShown, isShown) != isShown;
}

// A block may have got shorter than where the caret was in it.
bool ReplySelection::followChange(const ReplyBlocks::Change& change) {
    const std::optional<ReplyPosition> anchor = movedWith(change, m_anchor);
    const std::optional<ReplyPosition> cursor = movedWith(change, m_cursor);
    if (!anchor || !cursor || *anchor > m_layout.end() || *cursor > m_layout.end())
        return select({}, {});
    return select(m_layout.clamped(*anchor), m_layout.clamped(*cursor));
}

ReplyRange ReplySelection::wordAt(QPointF point) const {
    if (m_layout.count() == 0) return {};
    const ReplyPosition at = m_layout.characterAt(point);
    const BlockRange word = wordOf(m_layout.block(at.block).plainText(), at.offset);
    return {{at.block, word.from}, {at.block, word.to}};
}

ReplyRange ReplySelection::blockAt(QPointF point) const {
    if (m_layout.count() == 0) return {};
    const int block = m_layout.positionAt(point).block;
    return {{block, 0}, {block, m_layout.block(block).plainText().size()}};
}

QString ReplySelection::linkAtCaret() const {
    if (!m_isCaretShown || m_layout.count() == 0) return {};
    return m_layout.block(m_cursor.block).linkAt(m_cursor.offset);
}

// Up and down scroll until the user has put a caret into the text, or selects. With a screen reader
// they put it there, at the line where it was last.
std::optional<ReplyPosition> ReplySelection::positionAfter(const QKeyEvent& event) const {
    constexpr Qt::KeyboardModifiers known =
        Qt::ShiftModifier | Qt::ControlModifier | Qt::KeypadModifier;
    if (m_layout.count() == 0 || (event.modifiers() & ~known)) return std::nullopt;
    const bool byWord = event.modifiers().testFlag(Qt::ControlModifier);
    const bool isAtText = m_isCaretShown || event.modifiers().testFlag(Qt::ShiftModifier);
    switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        return neighbour((event.key() == Qt::Key_Left) == isReadLeftwards(), byWord);
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (byWord) return std::nullopt;
        if (!isAtText) return ScreenReader::isListening() ? std::optional(m_cursor) : std::nullopt;
        return lineBeside(event.key() == Qt::Key_Down);
    case Qt::Key_Home:
        if (!isAtText || byWord) return std::nullopt;
        return ReplyPosition{m_cursor.block, 0};
    case Qt::Key_End:
        if (!isAtText || byWord) return std::nullopt;
        return ReplyPosition{m_cursor.block, m_layout.block(m_cursor.block).plainText().size()};
    default:
        return std::nullopt;
    }
}

// Whether the text that the caret is in is read from right to left: there, an arrow to the left
// leads on.
bool ReplySelection::isReadLeftwards() const {
    return m_layout.block(m_cursor.block).directionAt(m_cursor.offset) == Qt::RightToLeft;
}

// The nearest other line; what lies between blocks belongs to the one above.
ReplyPosition ReplySelection::lineBeside(bool isBelow) const {
    const QRectF cursor = m_layout.cursorRect(m_cursor);
    const double step = std::max(1.0, cursor.height() / 2);
    double y = isBelow ? cursor.bottom() + step : cursor.top() - step;
    for (; y > 0 && y < m_layout.height(); y += isBelow ? step : -step) {
        const ReplyPosition at = m_layout.positionAt({cursor.left(), y});
        const double moved = m_layout.cursorRect(at).top() - cursor.top();
        if (isBelow ? moved > 1 : moved < -1) return at;
    }
    return isBelow ? m_layout.end() : ReplyPosition{};
}

ReplyPosition ReplySelection::neighbour(bool isForward, bool byWord) const {
    const QString& text = m_layout.block(m_cursor.block).plainText();
    qsizetype from = m_cursor.offset;
    qsizetype next = stepped(text, from, isForward, byWord);
    while (next >= 0 &&
           isUnseen(QStringView(text).sliced(std::min(from, next), std::abs(next - from)))) {
        from = next;
        next = stepped(text, from, isForward, byWord);
    }
    if (next >= 0) return {m_cursor.block, next};
    if (isForward && m_cursor.block + 1 < m_layout.count()) return {m_cursor.block + 1, 0};
    if (!isForward && m_cursor.block > 0)
        return {m_cursor.block - 1, m_layout.block(m_cursor.block - 1).plainText().size()};
    return m_cursor;
}

} // namespace vorq
