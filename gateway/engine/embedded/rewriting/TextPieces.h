#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vorq::gateway {

/// A text as words and what stands between them. An apostrophe inside a word belongs to it, and so
/// does what joins the parts of an address or a number. Joined, the pieces are the text.
struct TextPiece {
    std::string_view text;
    bool isWord = false;
};
[[nodiscard]] std::vector<TextPiece> piecesOf(std::string_view text);

/// The lines of a text, without their ends; at least one.
[[nodiscard]] std::vector<std::string_view> linesOf(std::string_view text);

/// With its first letter as a capital; words such as "iPhone" stay.
[[nodiscard]] std::string withCapital(std::string_view text);

/// Whether a sentence ends there: by a mark, or by one in quotes or parentheses.
[[nodiscard]] bool closesSentence(std::string_view text);

/// Whether a sentence ends where a text ends that grows, in time linear in what is added.
class SentenceTail {
  public:
    void add(std::string_view text);

    /// Nothing but blanks so far.
    [[nodiscard]] bool isEmpty() const { return m_isEmpty; }
    /// As `closesSentence` of the whole text.
    [[nodiscard]] bool closes() const { return m_closes; }

  private:
    bool m_isEmpty = true;
    bool m_closes = false;
    bool m_endsInBlank = false;
};

/// The bytes of a list marker ("- ", "• ", "3. ") and the white space before it; 0 for none. A
/// number at the beginning of a line belongs to the sentence if that began in the line before.
[[nodiscard]] std::size_t listMarkerLength(std::string_view line, std::string_view before = {});

/// Compared byte by byte.
[[nodiscard]] bool isOneOf(std::string_view word, std::span<const std::string_view> words);

} // namespace vorq::gateway
