#include "engine/embedded/PromptIntent.h"

#include "engine/embedded/QuestionKind.h"
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
        {"write",    "rewrite",    "rephrase",  "paraphrase", "translate", "proofread",
         "correct ", "fix ",       "draft",     "compose",    "shorten",   "simplify",
         "improve",  "polish",     "make it ",  "make this ", "turn this", "turn it",
         "reply to", "respond to", "übersetz",  "traduis",    "traduce",   "traduire",
         "schreib",  "formulier",  "korrigier", "verbesser",  "kürze",     "réécri",
         "corrige",  "rédige",     "escrib",    "mejora"});
    const std::string_view plain = withoutCourtesy(request);
    const auto opens = [&](std::string_view verb) { return plain.starts_with(verb); };
    return std::ranges::any_of(verbs, opens) ||
           containsAny(request, {"writing tools —", "rewrite the", "rewrite this", "translate this",
                                 "translate it", "multiple-choice question", "翻訳", "翻译",
                                 "書き直", "改写", "润色"});
}

/// Words of a prompt that say what to do and not about what.
bool isInstruction(const Word& word) {
    static constexpr auto keys = std::to_array<std::string_view>(
        {"explain", "tell",    "describ",   "show",     "help",    "understand", "pleas",
         "text",    "passag",  "selection", "say",      "list",    "giv",        "know",
         "read",    "mean",    "note",      "hi",       "hello",   "hey",        "thank",
         "okay",    "thing",   "look",      "detail",   "think",   "work",       "continu",
         "more",    "happen",  "point",     "bullet",   "sentenc", "line",       "fact",
         "idea",    "cod",     "articl",    "document", "email",   "mail",       "paragraph",
         "pag",     "section", "answer",    "dat",      "deadlin", "year",       "number",
         "figur",   "erklär",  "erkläre",   "einfach",  "bitte",   "zeig"});
    return std::ranges::find(keys, word.key) != keys.end();
}

bool isSmallTalk(std::string_view request) {
    static constexpr auto phrases =
        std::to_array<std::string_view>({"hi",           "hello",
                                         "hey",          "thanks",
                                         "thank you",    "thanks a lot",
                                         "ok",           "okay",
                                         "good morning", "good evening",
                                         "hi there",     "hello there",
                                         "hallo",        "guten tag",
                                         "guten morgen", "danke",
                                         "vielen dank",  "bonjour",
                                         "salut",        "merci",
                                         "hola",         "gracias",
                                         "ciao",         "grazie",
                                         "great",        "thank you very much",
                                         "こんにちは",   "ありがとう",
                                         "你好",         "谢谢"});
    while (!request.empty() && std::string_view(".!?, ").contains(request.back()))
        request.remove_suffix(1);
    return std::ranges::find(phrases, request) != phrases.end();
}

PromptIntent::Kind kindOf(std::string_view request) {
    using Kind = PromptIntent::Kind;
    if (isSmallTalk(request)) return Kind::SmallTalk;
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
                              "bullet point",
                              "explain like i",
                              "eli5",
                              "simple terms",
                              "simple words",
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
    if (request.starts_with("fass") && request.contains("zusammen")) return Kind::Summary;
    return Kind::Question;
}

} // namespace

PromptIntent readPrompt(std::string_view prompt) {
    PromptIntent intent;
    intent.request = ownWords(prompt);
    const std::string lower = lowered(intent.request);
    intent.goesDeeper = trimmed(prompt).starts_with("Go deeper on this excerpt");
    intent.count = countIn(lower);
    intent.kind = kindOf(lower);
    for (const Word& word : wordsOf(intent.request)) {
        const bool matters = word.isContent ? !isInstruction(word) : word.isNumber && !intent.count;
        if (!matters) continue;
        if (!intent.subject.empty()) intent.subject += ' ';
        intent.subject.append(intent.request, word.offset, word.length);
    }
    const bool asksByKind =
        questionKind(lower) == QuestionKind::Time || questionKind(lower) == QuestionKind::Quantity;
    if (intent.kind == PromptIntent::Kind::Question && intent.subject.empty() && !asksByKind) {
        intent.kind = PromptIntent::Kind::Summary;
    }
    return intent;
}

PromptWithText apart(std::string_view prompt) {
    constexpr std::size_t longestLine = 200;
    constexpr std::size_t shortestText = 120;
    prompt = trimmed(prompt);
    PromptWithText whole{.prompt = std::string(prompt), .text = {}};
    const auto split = [&](std::string_view request, std::string_view text) {
        return PromptWithText{.prompt = std::string(trimmed(request)),
                              .text = std::string(trimmed(text))};
    };
    const std::size_t first = prompt.substr(0, longestLine).find_first_of(":\n");
    if (first != std::string_view::npos &&
        trimmed(prompt.substr(first + 1)).size() >= shortestText) {
        return split(prompt.substr(0, first), prompt.substr(first + 1));
    }
    const std::size_t last = prompt.rfind('\n');
    if (last != std::string_view::npos && last >= shortestText &&
        prompt.size() - last <= longestLine) {
        return split(prompt.substr(last), prompt.substr(0, last));
    }
    return whole;
}

} // namespace vorq::gateway
