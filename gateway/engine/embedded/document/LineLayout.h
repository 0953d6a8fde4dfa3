#pragma once

#include "engine/embedded/words/Lexicon.h"

#include <cstddef>
#include <string_view>

namespace vorq::gateway {

/// How the lines of a text are to be read: as prose broken at a margin, or each for itself, as in
/// minutes, recipes and chat logs.
class LineLayout {
  public:
    LineLayout(std::string_view text, const Lexicon& lexicon);

    /// Whether `line` goes on with the sentence of the line `before` it, both trimmed.
    [[nodiscard]] bool continues(std::string_view before, std::string_view line) const;
    /// Whether `line`, behind a blank one, is the heading of the block that `next` begins or, if
    /// that is empty, of the next block, which `behind` begins.
    [[nodiscard]] bool isHeading(std::string_view line, std::string_view next,
                                 std::string_view behind) const;
    /// The same for the first line of a text.
    [[nodiscard]] bool isTitle(std::string_view line, std::string_view next) const;
    /// "Dear tenants," and the like, alone on a line.
    [[nodiscard]] bool isGreeting(std::string_view line) const;
    /// "Kind regards," and the like, alone on a line.
    [[nodiscard]] bool isClosing(std::string_view line) const;

  private:
    const Lexicon& m_lexicon;
    /// In columns; 0 if the lines are no prose broken at a margin.
    std::size_t m_margin = 0;
};

/// The bytes of a time and a name in front of what somebody says: "[09:04] Ben: ", "Anna: " where
/// a time stands in front. 0 if there is none.
[[nodiscard]] std::size_t speakerLabel(std::string_view line);

/// Whether the line ends with the mark of a sentence, brackets and quotation marks behind it aside.
[[nodiscard]] bool endsSentence(std::string_view line);
/// The same for the mark of a question.
[[nodiscard]] bool endsQuestion(std::string_view line);

} // namespace vorq::gateway
