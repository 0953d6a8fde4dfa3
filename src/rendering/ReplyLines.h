#pragma once

#include "support/text/Characters.h"
#include "support/text/CodeUnits.h"
#include "support/text/Text.h"

#include <QStringView>

#include <optional>

namespace vorq {

/// What a single line of a reply can be. Lines are given without blanks at both ends, and results
/// point into them.
namespace replylines {

inline constexpr QStringView boldMarker = u"**";

[[nodiscard]] inline bool opensOrClosesFence(QStringView line) {
    return startsWithCharacters(line, u"```");
}

[[nodiscard]] bool isTableRow(QStringView line);
[[nodiscard]] bool isTableSeparator(QStringView line);
[[nodiscard]] bool isDivider(QStringView line);

[[nodiscard]] inline bool isBulletMarked(QStringView line) {
    return startsWithCharacters(line, u"- ") || startsWithCharacters(line, u"* ") ||
           startsWithCharacters(line, u"\u2022 ");
}

/// The text of a heading marked with one to six "#".
[[nodiscard]] std::optional<QStringView> atxHeading(QStringView line);

/// The text of a bold line between its markers, which may be empty; the closing marker may be
/// missing.
[[nodiscard]] std::optional<QStringView> boldLabel(QStringView line);

/// Whether the line reads as a heading without any marks. Only meant for a line before a list.
[[nodiscard]] bool looksLikeBareSectionHeading(QStringView line);

[[nodiscard]] inline std::optional<QStringView> quotedText(QStringView line) {
    if (startsWithCharacters(line, u"> ")) return line.sliced(2);
    if (line == u">") return QStringView();
    return std::nullopt;
}

[[nodiscard]] inline std::optional<QStringView> bulletItem(QStringView line) {
    if (isBulletMarked(line)) return line.sliced(2);
    return std::nullopt;
}

[[nodiscard]] std::optional<QStringView> numberedItem(QStringView line);

/// Whether a line that begins with this code unit can be a list item at all.
[[nodiscard]] constexpr bool mayBeginItem(QChar unit) {
    return unit == u'-' || unit == u'*' || (unit >= u'0' && unit <= u'9') || unit >= QChar(0x80);
}

/// Whether a line that begins with this code unit can be a heading without marks at all. Control
/// characters can hide its first letter.
[[nodiscard]] constexpr bool mayBeginBareHeading(QChar unit) {
    return (unit >= u'A' && unit <= u'Z') || (unit >= u'0' && unit <= u'9') || unit < u' ' ||
           unit >= QChar(0x7F);
}

/// Whether a list item only leads in to a list.
[[nodiscard]] bool isListBridge(QStringView item);

/// The trimmed text without the bold markers that enclose the whole of it.
[[nodiscard]] QStringView withoutOuterBold(QStringView text);

/// The table row without one bar at either end.
[[nodiscard]] QStringView withoutOuterBars(QStringView line);

/// Calls `visit(cell)` for each cell of a table row, in order.
template<typename Visit>
void forEachTableCell(QStringView line, Visit visit) {
    const QStringView cells = withoutOuterBars(line);
    qsizetype start = 0;
    codeunits::forEach(
        cells, 0,
        [&](qsizetype bar) {
            if (!isCharactersAt(cells, bar, u"|")) return true;
            visit(trimmedBlanks(cells.sliced(start, bar - start)));
            start = bar + 1;
            return true;
        },
        u'|');
    visit(trimmedBlanks(cells.sliced(start)));
}

} // namespace replylines
} // namespace vorq
