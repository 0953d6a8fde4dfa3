#pragma once

#include <cstddef>
#include <string>

namespace vorq::bench {

/// Replies as models write them, for benchmarks: headings, paragraphs, lists, code, tables, quotes.
enum class Script {
    Ascii,
    Typographic, ///< English with curly quotes, dashes and accents
    Mixed,       ///< Japanese with English words and emoji
};

[[nodiscard]] const char* scriptName(Script script);

/// A reply in UTF-8 of at least `bytes` bytes, cut at the end of a block. The same arguments always
/// give the same text.
[[nodiscard]] std::string replyText(Script script, std::size_t bytes);

/// Texts that are hard on parsers, each of at least `bytes` bytes.
enum class Hostile {
    Bars,      ///< lines of bars without a separator
    Hashes,    ///< headings, and lines of many "#"
    Fences,    ///< fences that never match up
    Quotes,    ///< quotes in quotes
    Stars,     ///< one line of bold markers that open and close nothing
    Blanks,    ///< headings far above the list that makes them headings
    Headings,  ///< one line of words that may all begin a heading
    Sentences, ///< one paragraph of very short sentences
    Marks,     ///< combining marks on everything
    Last = Marks,
};

[[nodiscard]] const char* hostileName(Hostile hostile);
[[nodiscard]] std::string hostileText(Hostile hostile, std::size_t bytes);

} // namespace vorq::bench
