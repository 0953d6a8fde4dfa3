#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorq::gateway {

/// One sentence, with inline Markdown taken off.
struct Sentence {
    std::string text;
    /// The first of its paragraph or list item.
    bool startsBlock = false;

    bool operator==(const Sentence&) const = default;
};

/// A text as sentences. Code, tables and rules are left out; headings stand apart.
struct Document {
    std::vector<std::string> headings;
    std::vector<Sentence> sentences;
};

/// Reads plain text or Markdown of any size in time linear in it. `text` must be valid UTF-8 with
/// "\n" as its only line end, as `sanitized` gives it.
[[nodiscard]] Document readDocument(std::string_view text);

/// Splits one paragraph, in which line ends are blanks, into sentences.
[[nodiscard]] std::vector<std::string> splitSentences(std::string_view paragraph);

/// Without emphasis, code and link markers.
[[nodiscard]] std::string withoutInlineMarkup(std::string_view text);

} // namespace vorq::gateway
