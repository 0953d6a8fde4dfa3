#pragma once

#include "engine/embedded/words/Language.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace vorq::gateway {

/// One sentence, with inline Markdown taken off: a part of its document's text.
struct Sentence {
    static constexpr std::uint32_t kNoHeading = std::numeric_limits<std::uint32_t>::max();

    std::uint32_t offset = 0;
    std::uint32_t length = 0;
    /// The heading that it stands below, by its place among the headings.
    std::uint32_t heading = kNoHeading;
    /// The bytes at its beginning that only say who speaks and when.
    std::uint16_t label = 0;
    /// The first of its paragraph, line or list item.
    bool startsBlock = false;
    bool isQuestion = false;
};

/// A text as sentences. Code, tables, rules, and what begins and ends a mail are left out; headings
/// stand apart, except those that are questions.
struct Document {
    Language language = Language::English;
    std::string text;
    std::vector<std::string> headings;
    std::vector<Sentence> sentences;

    [[nodiscard]] std::string_view textOf(const Sentence& sentence) const {
        return std::string_view(text).substr(sentence.offset, sentence.length);
    }
};

/// Reads plain text or Markdown of any size in time linear in it. `text` must be valid UTF-8 with
/// "\n" as its only line end, as `sanitized` gives it, and shorter than 4 GB.
[[nodiscard]] Document readDocument(std::string_view text);

/// Without emphasis, code and link markers.
[[nodiscard]] std::string withoutInlineMarkup(std::string_view text);

} // namespace vorq::gateway
