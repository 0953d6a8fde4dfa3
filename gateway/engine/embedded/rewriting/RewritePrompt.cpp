#include "engine/embedded/rewriting/RewritePrompt.h"

#include "support/Utf8.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vorq::gateway {
namespace {

constexpr std::size_t kLongestAsk = 200; // bytes; what is longer says more than a rule can do

constexpr auto kEnds = std::to_array<std::string_view>({
    "\nVersion the writer is looking at — ",
    "\nSession interactions (use these to assist better",
    "\nReturn ONE drop-in replacement",
});

/// What stands behind the mark, up to whatever part of the prompt follows it.
std::string_view behind(std::string_view prompt, std::string_view mark) {
    const std::size_t at = prompt.find(mark);
    if (at == std::string_view::npos) return {};
    const std::string_view rest = prompt.substr(at + mark.size());
    std::size_t end = rest.size();
    for (const std::string_view part : kEnds)
        end = std::min(end, rest.find(part));
    return trimmed(rest.substr(0, end));
}

/// Words that say that something is to be done to the text, whatever it is.
constexpr auto kNeutralWords = std::to_array<std::string_view>(
    {"please",  "can",     "could",    "would",     "you",   "just",  "make",  "turn", "change",
     "convert", "rewrite", "put",      "set",       "write", "it",    "this",  "that", "the",
     "a",       "an",      "text",     "selection", "to",    "into",  "in",    "as",   "of",
     "bit",     "little",  "slightly", "now",       "me",    "for",   "use",   "be",   "bitte",
     "mach",    "es",      "das",      "den",       "text",  "etwas", "ein",   "als",  "in",
     "rends",   "le",      "ce",       "texte",     "un",    "peu",   "hazlo", "el",   "texto",
     "poco",    "por",     "favor",    "s'il",      "te",    "plaît", "all"});

constexpr auto kAsks = std::to_array<std::pair<std::string_view, RewriteRule>>({
    {"short", RewriteRule::Shorten},
    {"shorter", RewriteRule::Shorten},
    {"shorten", RewriteRule::Shorten},
    {"tighten", RewriteRule::Shorten},
    {"tighter", RewriteRule::Shorten},
    {"concise", RewriteRule::Shorten},
    {"more concise", RewriteRule::Shorten},
    {"condense", RewriteRule::Shorten},
    {"trim", RewriteRule::Shorten},
    {"cut filler", RewriteRule::Shorten},
    {"drop filler", RewriteRule::Shorten},
    {"remove filler", RewriteRule::Shorten},
    {"remove filler words", RewriteRule::Shorten},
    {"kürzer", RewriteRule::Shorten},
    {"kürze", RewriteRule::Shorten},
    {"kürzen", RewriteRule::Shorten},
    {"plus court", RewriteRule::Shorten},
    {"raccourcis", RewriteRule::Shorten},
    {"más corto", RewriteRule::Shorten},
    {"acorta", RewriteRule::Shorten},
    {"fix", RewriteRule::Repair},
    {"tidy", RewriteRule::Repair},
    {"tidy up", RewriteRule::Repair},
    {"clean", RewriteRule::Repair},
    {"clean up", RewriteRule::Repair},
    {"fix spacing", RewriteRule::Repair},
    {"fix spaces", RewriteRule::Repair},
    {"fix quotes", RewriteRule::Repair},
    {"fix capitals", RewriteRule::Repair},
    {"fix capitalization", RewriteRule::Repair},
    {"fix doubled words", RewriteRule::Repair},
    {"bullets", RewriteRule::ToBullets},
    {"bullet list", RewriteRule::ToBullets},
    {"bulleted list", RewriteRule::ToBullets},
    {"bullet points", RewriteRule::ToBullets},
    {"list", RewriteRule::ToBullets},
    {"stichpunkte", RewriteRule::ToBullets},
    {"liste", RewriteRule::ToBullets},
    {"lista", RewriteRule::ToBullets},
    {"sentences", RewriteRule::ToSentences},
    {"back sentences", RewriteRule::ToSentences},
    {"prose", RewriteRule::ToSentences},
    {"paragraph", RewriteRule::ToSentences},
    {"one paragraph", RewriteRule::ToSentences},
    {"no bullets", RewriteRule::ToSentences},
    {"without bullets", RewriteRule::ToSentences},
    {"remove bullets", RewriteRule::ToSentences},
    {"uppercase", RewriteRule::UpperCase},
    {"upper case", RewriteRule::UpperCase},
    {"caps", RewriteRule::UpperCase},
    {"capitals", RewriteRule::UpperCase},
    {"capital letters", RewriteRule::UpperCase},
    {"lowercase", RewriteRule::LowerCase},
    {"lower case", RewriteRule::LowerCase},
    {"title case", RewriteRule::TitleCase},
    {"titlecase", RewriteRule::TitleCase},
    {"sentence case", RewriteRule::SentenceCase},
});

/// The words that matter, with single blanks.
std::string coreOf(std::string_view ask) {
    const std::string lower = lowered(ask);
    std::string core;
    for (std::size_t begin = 0; begin < lower.size();) {
        const std::size_t end = std::min(lower.find_first_of(" \t\n.,!?-", begin), lower.size());
        const std::string_view word = std::string_view(lower).substr(begin, end - begin);
        begin = end + 1;
        if (word.empty() || std::ranges::find(kNeutralWords, word) != kNeutralWords.end()) continue;
        if (!core.empty()) core += ' ';
        core += word;
    }
    return core;
}

} // namespace

std::optional<RewritePrompt> readRewritePrompt(std::string_view prompt) {
    prompt = trimmed(prompt);
    if (!prompt.starts_with("Writing tools — ")) return std::nullopt;
    RewritePrompt read;
    read.asksForWords = prompt.starts_with("Writing tools — word alternatives.\n");
    if (read.asksForWords) return read;
    read.ask = behind(prompt, "\nWriter ask: ");
    read.isAnotherTake = read.ask.empty();
    if (!read.isAnotherTake) {
        read.current = behind(
            prompt, "\nVersion the writer is looking at — apply the direction to this one:\n");
    }
    return read;
}

std::optional<RewriteRule> ruleOf(std::string_view ask) {
    if (ask.size() > kLongestAsk) return std::nullopt;
    const std::string core = coreOf(ask);
    const auto* const found =
        std::ranges::find(kAsks, std::string_view(core), &decltype(kAsks)::value_type::first);
    return found == kAsks.end() ? std::nullopt : std::optional(found->second);
}

} // namespace vorq::gateway
