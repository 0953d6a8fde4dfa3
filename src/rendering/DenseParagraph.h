#pragma once

#include <QStringView>

#include <vector>

namespace vorq {

/// Cuts a long paragraph into paragraphs of one or two sentences.
///
/// `text` is trimmed. The paragraphs point into it, and stand one blank apart. A text that is not
/// cut is the only paragraph.
[[nodiscard]] std::vector<QStringView> splitDenseParagraph(QStringView text);

/// The fewest characters of a text that is cut; since a character takes one code unit or more, no
/// text of fewer units is.
inline constexpr qsizetype densestParagraph = 280;

} // namespace vorq
