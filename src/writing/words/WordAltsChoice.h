#pragma once

#include "writing/words/WordAltsAnswer.h"
#include "writing/words/WritingWordAlts.h"

#include <vector>

namespace vorq {

/// For so many words of the selection one alternative is offered.
inline constexpr qsizetype wordsPerAlt = 6;
/// More would hide the text.
inline constexpr qsizetype mostWordAlts = 8;
inline constexpr qsizetype longestAlternative = 40;

/// How many alternatives a selection is offered at most.
[[nodiscard]] qsizetype wordAltsFor(const QString& selection);

/// The alternative as it would stand in the place of the word, with its capitals and its
/// possessive; "" for one that is no other single word.
[[nodiscard]] QString fittedAlternative(QStringView alternative, QStringView word);

/// The best of what a model offered for a selection, in the order of the text, each at a word of
/// its own. Words that carry the meaning come before those that hold a sentence together, else the
/// order of the answer counts; they stand apart where there are enough of them.
[[nodiscard]] QList<WritingWordAlt> chosenWordAlts(const std::vector<OfferedWordAlt>& offered,
                                                   const QString& selection);

} // namespace vorq
