#pragma once

#include "rendering/AssistantReplyDocument.h"
#include "rendering/InlineSpans.h"

#include <QColor>
#include <QFont>
#include <QList>
#include <QTextLayout>

namespace vorq {

/// The look of a reply, which comes from the theme.
struct ReplyTheme {
    QColor ink;
    QColor link;
    QColor selection;
    /// Nothing is faint then: rules and markers have the ink's own colour.
    bool hasHighContrast = false;
    /// Times the usual size of text.
    double textScale = 1;

    bool operator==(const ReplyTheme&) const = default;
};

/// How each kind of block is set. Sizes are logical pixels.
namespace ReplyStyle {

/// One kind of text in a block.
struct Type {
    double size = 0;
    QFont::Weight weight = QFont::Medium;
    double opacity = 1;
    /// Between lines, never under the last.
    double lineGap = 0;
    bool isMono = false;
};

inline constexpr double itemGap = 6;
inline constexpr double bulletColumn = 18;
inline constexpr double numberColumn = 18;
inline constexpr double numberGap = 6;
inline constexpr double markerOpacity = 0.65;
inline constexpr double quoteBarWidth = 3;
inline constexpr double quoteBarRadius = 1.5;
inline constexpr double quoteBarOpacity = 0.35;
inline constexpr double quoteGap = 10;
/// Over so much code that is too wide fades out.
inline constexpr double codeFade = 24;
inline constexpr double platePadding = 10;
inline constexpr double plateRadius = 8;
inline constexpr double codePlateOpacity = 0.06;
inline constexpr double tablePlateOpacity = 0.04;
inline constexpr double tableRuleOpacity = 0.14;
inline constexpr double tableRowGap = 7;
inline constexpr double tableColumnGap = 12;
inline constexpr double dividerOpacity = 0.22;
inline constexpr double ruleHeight = 1;

/// What code in a line from right to left is set between, unseen.
inline constexpr QChar isolateStart{u'\u2066'};
inline constexpr QChar isolateEnd{u'\u2069'};

inline constexpr Type bulletMarker{14.5, QFont::DemiBold, markerOpacity, 0, false};
inline constexpr Type numberMarker{13.5, QFont::DemiBold, markerOpacity, 0, false};
inline constexpr Type tableHeader{13, QFont::DemiBold, 1, 0, false};

/// The type of a block's text; of a table, that of its cells.
[[nodiscard]] Type typeOf(AssistantReplyDocument::Kind kind);

/// What stands between a block and the one before it.
[[nodiscard]] double gapBetween(AssistantReplyDocument::Kind before,
                                AssistantReplyDocument::Kind block);

/// The weight of a strongly emphasised run.
[[nodiscard]] QFont::Weight heavier(QFont::Weight weight);

[[nodiscard]] QFont fontOf(const Type& type, double textScale);

/// The formats of the runs of a parsed line.
[[nodiscard]] QList<QTextLayout::FormatRange> formatsOf(const InlineSpans& parsed, const Type& type,
                                                        const ReplyTheme& theme);

} // namespace ReplyStyle
} // namespace vorq
