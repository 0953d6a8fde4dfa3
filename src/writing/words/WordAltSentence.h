#pragma once

#include "writing/difference/WordDifference.h"
#include "writing/words/WritingWordAlts.h"

#include <vector>

namespace vorq {

/// More of a sentence than this on either side of the word is left out, in UTF-16 units.
inline constexpr qsizetype mostAroundWord = 90;

/// The sentence of the selection in which the word stands as it would read with the alternative,
/// which is the part that is added. Without line breaks; none for an alternative without its place.
[[nodiscard]] std::vector<DifferencePart> sentenceWith(const QString& selection,
                                                       const WritingWordAlt& alt);

} // namespace vorq
