#include "engine/embedded/PromptIntent.h"

#include "engine/embedded/Words.h"
#include "support/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

namespace vorq::gateway {
namespace {

constexpr std::size_t kMostAskedFor = 15;

bool containsAny(std::string_view text, std::initializer_list<std::string_view> phrases) {
    return std::ranges::any_of(phrases, [&](std::string_view p) { return text.contains(p); });
}

/// What stands behind the last `mark`, up to the end of the line or of the text.
std::optional<std::string_view> behind(std::string_view text, std::string_view mark, bool oneLine) {
    const std::size_t at = text.rfind(mark);
    if (at == std::string_view::npos) return std::nullopt;
    const std::string_view rest = text.substr(at + mark.size());
    return trimmed(oneLine ? rest.substr(0, rest.find('\n')) : rest);
}

/// The client wraps the user's words in instructions for a model; these are its wrappings.
std::string_view ownWords(std::string_view prompt) {
    if (const auto request = behind(prompt, "Student request:", false)) return *request;
    if (const auto request = behind(prompt, "Also address this request:", true)) return *request;
    if (prompt.starts_with("Go deeper on this excerpt")) return "";
    if (prompt.starts_with("Deep research this attached")) return "";
    if (prompt.starts_with("Please review the attached materials")) return "";
    return trimmed(prompt);
}

std::optional<std::size_t> numberOf(std::string_view word) {
    static constexpr auto names = std::to_array<std::string_view>(
        {"one", "two", "three", "four", "five", "six", "seven", "eight", "nine", "ten"});
    if (const auto name = std::ranges::find(names, word); name != names.end()) {
        return static_cast<std::size_t>(name - names.begin()) + 1;
    }
    std::size_t value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    const bool whole = error == std::errc() && end == word.data() + word.size();
    return whole && value >= 1 ? std::optional(std::min(value, kMostAskedFor)) : std::nullopt;
}

std::optional<std::size_t> countIn(std::string_view request) {
    static constexpr auto things = std::to_array<std::string_view>(
        {"sentence", "point", "bullet", "line", "idea", "fact", "takeaway", "term", "keyword",
         "word", "satz", "sätze", "punkte", "phrase", "frase"});
    const std::vector<Word> words = wordsOf(request);
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::optional<std::size_t> number =
            numberOf(request.substr(words[i].offset, words[i].length));
        if (!number) continue;
        for (std::size_t k = i + 1; k < std::min(i + 3, words.size()); ++k) {
            const std::string_view next = request.substr(words[k].offset, words[k].length);
            const auto named = [&](std::string_view thing) { return next.starts_with(thing); };
            if (std::ranges::any_of(things, named)) return number;
        }
    }
    return std::nullopt;
}

/// Without "please", "can you" and the like in front.
std::string_view withoutCourtesy(std::string_view request) {
    for (std::string_view opening :
         {"please ", "can you ", "could you ", "would you ", "please "}) {
        if (request.starts_with(opening)) request.remove_prefix(opening.size());
    }
    return request;
}

bool asksForWriting(std::string_view request) {
    static constexpr auto verbs = std::to_array<std::string_view>(
        {"write",    "rewrite",    "rephrase", "paraphrase", "translate", "proofread",
         "correct ", "fix ",       "draft",    "compose",    "shorten",   "simplify",
         "improve",  "polish",     "make it ", "make this ", "turn this", "turn it",
         "reply to", "respond to", "übersetz", "traduis",    "traduce"});
    const std::string_view plain = withoutCourtesy(request);
    const auto opens = [&](std::string_view verb) { return plain.starts_with(verb); };
    return std::ranges::any_of(verbs, opens) ||
           containsAny(request, {"writing tools —", "rewrite the", "rewrite this", "translate this",
                                 "translate it", "multiple-choice question"});
}

/// Words of a prompt that say what to do and not about what.
bool isInstruction(const Word& word) {
    static constexpr auto keys = std::to_array<std::string_view>(
        {"explain",   "tell", "describ", "show", "help",  "understand", "pleas",  "text",  "passag",
         "selection", "say",  "list",    "giv",  "know",  "read",       "mean",   "note",  "hi",
         "hello",     "hey",  "thank",   "okay", "thing", "look",       "detail", "think", "work"});
    return std::ranges::find(keys, word.key) != keys.end();
}

PromptIntent::Kind kindOf(std::string_view request) {
    using Kind = PromptIntent::Kind;
    if (asksForWriting(request)) return Kind::Writing;
    if (containsAny(request, {"key term", "keyword", "key word", "glossary", "important term",
                              "important word", "main term", "schlüsselbegriff"})) {
        return Kind::KeyTerms;
    }
    if (containsAny(request, {"summar",
                              "tl;dr",
                              "tldr",
                              "key point",
                              "main point",
                              "key idea",
                              "main idea",
                              "key sentence",
                              "takeaway",
                              "overview",
                              "gist",
                              "outline",
                              "in short",
                              "analyze",
                              "analyse",
                              "zusammenfass",
                              "überblick",
                              "résum",
                              "resum",
                              "riassu",
                              "samenvat",
                              "important part",
                              "most important",
                              "what is this about",
                              "what's this about",
                              "what is it about",
                              "要約",
                              "总结"})) {
        return Kind::Summary;
    }
    return Kind::Question;
}

} // namespace

PromptIntent readPrompt(std::string_view prompt) {
    PromptIntent intent;
    intent.request = ownWords(prompt);
    const std::string lower = lowered(intent.request);
    const auto isContent = [](const Word& word) {
        return (word.isContent && !isInstruction(word)) || word.isNumber;
    };
    intent.goesDeeper = trimmed(prompt).starts_with("Go deeper on this excerpt");
    intent.count = countIn(lower);
    intent.kind = kindOf(lower);
    const bool saysNothing = std::ranges::none_of(wordsOf(intent.request), isContent);
    if (intent.kind == PromptIntent::Kind::Question && saysNothing) {
        intent.kind = PromptIntent::Kind::Summary;
    }
    return intent;
}

} // namespace vorq::gateway
