#include "ui/reply/ReplyText.h"

#include "ui/reply/ReplyView.h"

#include <algorithm>

namespace vorq {
namespace {

constexpr int atEnd = -1; // offsets that stand for others
constexpr int atCursor = -2;

} // namespace

QRect onScreen(const ReplyView& view, const QRectF& inView) {
    return QRectF(view.mapToGlobal(inView.topLeft()), inView.size()).toAlignedRect();
}

const ReplyLayout& ReplyText::layout() const {
    return view().layout();
}

ReplyPosition ReplyText::positionOf(int offset) const {
    const ReplyRange part = span();
    const qsizetype from = layout().offsetOf(part.from);
    return std::min(layout().positionOf(from + std::max(0, offset)), part.to);
}

int ReplyText::offsetOf(const ReplyPosition& position) const {
    const ReplyRange part = span();
    const ReplyPosition within = std::clamp(position, part.from, std::max(part.from, part.to));
    return static_cast<int>(layout().offsetOf(within) - layout().offsetOf(part.from));
}

// What is selected of this part.
ReplyRange ReplyText::selected() const {
    const ReplyRange part = span();
    const ReplyRange all = view().selection().range();
    return {std::max(all.from, part.from), std::min(all.to, part.to)};
}

void ReplyText::selection(int index, int* start, int* end) const {
    const ReplyRange range = index == 0 ? selected() : ReplyRange();
    *start = range.isEmpty() ? 0 : offsetOf(range.from);
    *end = range.isEmpty() ? 0 : offsetOf(range.to);
}

int ReplyText::selectionCount() const {
    return selected().isEmpty() ? 0 : 1;
}

void ReplyText::addSelection(int start, int end) {
    view().select(positionOf(start), positionOf(end));
}

void ReplyText::removeSelection(int) {
    view().clearSelection();
}

void ReplyText::setSelection(int, int start, int end) {
    addSelection(start, end);
}

int ReplyText::cursorPosition() const {
    return offsetOf(view().selection().cursor());
}

void ReplyText::setCursorPosition(int position) {
    addSelection(position, position);
}

QString ReplyText::text(int start, int end) const {
    const int from = std::max(0, start);
    const int to = end < 0 ? characterCount() : end;
    return from < to ? layout().text({positionOf(from), positionOf(to)}) : QString();
}

int ReplyText::characterCount() const {
    return offsetOf(span().to);
}

std::pair<int, int> ReplyText::lineAt(int offset) const {
    const ReplyPosition at = positionOf(offset);
    if (at.block >= layout().count()) return {0, 0};
    const BlockLayout& block = layout().block(at.block);
    const BlockRange line = block.lineAt(at.offset);
    const bool endsBlock = line.to >= block.plainText().size();
    const int from = offsetOf({at.block, line.from});
    const int to = offsetOf({at.block, line.to});
    return {from, std::min(characterCount(), endsBlock ? to + 1 : to)};
}

QString ReplyText::line(int offset, int* start, int* end) const {
    *start = *end = -1;
    if (offset < 0 || offset > characterCount()) return {};
    const auto [from, to] = lineAt(offset);
    *start = from;
    *end = to;
    return text(from, to);
}

QString ReplyText::textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                                int* end) const {
    const int at = offset == atCursor ? cursorPosition() : offset;
    if (boundary == QAccessible::LineBoundary)
        return line(at == atEnd ? characterCount() : at, start, end);
    return QAccessibleTextInterface::textAtOffset(at, boundary, start, end);
}

QString ReplyText::textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                                    int* end) const {
    const int at = offset == atCursor ? cursorPosition() : offset;
    if (boundary == QAccessible::LineBoundary)
        return line(lineAt(at == atEnd ? characterCount() : at).first - 1, start, end);
    return QAccessibleTextInterface::textBeforeOffset(at, boundary, start, end);
}

QString ReplyText::textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                                   int* end) const {
    const int at = offset == atCursor ? cursorPosition() : offset;
    if (boundary != QAccessible::LineBoundary)
        return QAccessibleTextInterface::textAfterOffset(at, boundary, start, end);
    const int next = lineAt(at == atEnd ? characterCount() : at).second;
    return line(next < characterCount() ? next : -1, start, end);
}

QRect ReplyText::characterRect(int offset) const {
    const ReplyPosition from = positionOf(offset);
    const QRectF glyph = layout().firstLineRect({from, positionOf(offset + 1)});
    return onScreen(view(), glyph.isNull() ? layout().cursorRect(from) : glyph);
}

int ReplyText::offsetAtPoint(const QPoint& point) const {
    const QPointF at = view().mapFromGlobal(point);
    if (!view().contains(at)) return -1;
    const ReplyPosition position = layout().positionAt(at);
    const ReplyRange part = span();
    return position < part.from || position > part.to ? -1 : offsetOf(position);
}

QString ReplyText::attributes(int, int* start, int* end) const {
    *start = 0;
    *end = characterCount();
    return {};
}

} // namespace vorq
