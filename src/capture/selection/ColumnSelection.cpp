#include "capture/selection/ColumnSelection.h"

#include <algorithm>

namespace vorq {
namespace {

// A run begins somewhere in the first line, has all of those between, and ends in the last one.
bool isRun(const QStringList& lines, const QList<QStringView>& pieces) {
    if (!lines.front().endsWith(pieces.front()) || !lines.back().startsWith(pieces.back()))
        return false;
    for (qsizetype i = 1; i + 1 < lines.size(); ++i)
        if (lines[i] != pieces[i]) return false;
    return true;
}

} // namespace

QStringList selectedLines(const CaptureSource& source) {
    const AccessibleElementPtr element =
        source.accessibility.focusedElement(source.process, source.stop);
    const auto range = element ? element->selectedTextRange() : std::nullopt;
    const auto value = range && range->length >= 1 ? element->value() : std::nullopt;
    if (!value || range->location < 0 || range->location > value->size() ||
        range->length > value->size() - range->location)
        return {};
    const qsizetype start = range->location;
    const qsizetype end = start + range->length;
    // From -1 on, the search would begin at the end.
    const qsizetype before = start == 0 ? -1 : value->lastIndexOf(u'\n', start - 1);
    const qsizetype after = value->indexOf(u'\n', end);
    return value->sliced(before + 1, (after < 0 ? value->size() : after) - before - 1).split(u'\n');
}

bool isCutOfColumns(const QStringList& lines, QStringView text) {
    if (text.endsWith(u'\n')) text.chop(1);
    const QList<QStringView> pieces = text.split(u'\n');
    if (lines.size() < 2 || pieces.size() != lines.size()) return false;
    for (qsizetype i = 0; i < lines.size(); ++i)
        if (!lines[i].contains(pieces[i])) return false;
    return !isRun(lines, pieces);
}

} // namespace vorq
