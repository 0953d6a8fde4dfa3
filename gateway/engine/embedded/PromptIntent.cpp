#include "engine/embedded/PromptIntent.h"

#include "engine/embedded/document/Document.h"
#include "engine/embedded/words/Lexicon.h"
#include "engine/embedded/words/Words.h"
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

/// One to ten in each of the known languages.
constexpr auto kNumbers = std::to_array<std::string_view>({
    "one two three four five six seven eight nine ten",
    "einen zwei drei vier fünf sechs sieben acht neun zehn",
    "une deux trois quatre cinq six sept huit neuf dix",
    "una dos tres cuatro cinco seis siete ocho nueve diez",
    "uma duas três quatro cinco seis sete oito nove dez",
    "una due tre quattro cinque sei sette otto nove dieci",
    "een twee drie vier vijf zes zeven acht negen tien",
    "одном двух трёх четырёх пяти шести семи восьми девяти десяти",
    "جملة جملتين ثلاث أربع خمس ست سبع ثماني تسع عشر",
    "一 二 三 四 五 六 七 八 九 十",
});

std::optional<std::size_t> numberOf(std::string_view word) {
    for (std::string_view names : kNumbers) {
        for (std::size_t number = 1; !names.empty(); ++number) {
            const std::size_t blank = std::min(names.find(' '), names.size());
            if (names.substr(0, blank) == word) return number;
            names.remove_prefix(std::min(blank + 1, names.size()));
        }
    }
    std::size_t value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    const bool whole = error == std::errc() && end == word.data() + word.size();
    return whole && value >= 1 ? std::optional(std::min(value, kMostAskedFor)) : std::nullopt;
}

/// "三句话", "三つの文": a number and what is counted, without a blank between them.
std::optional<std::size_t> unspacedCountIn(std::string_view request) {
    constexpr std::size_t farthest = 12; // bytes
    for (std::string_view thing : {"句", "文", "点", "个要点"}) {
        const std::size_t at = request.find(thing);
        if (at == std::string_view::npos) continue;
        const std::size_t from = at > farthest ? at - farthest : 0;
        const std::string_view before = request.substr(from, at - from);
        for (std::size_t i = 0; i < before.size(); ++i) {
            const CodePoint c = decodeAt(before, i);
            if (const auto number = numberOf(before.substr(i, c.length))) return number;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> countIn(std::string_view request, Language language) {
    static constexpr auto things = std::to_array<std::string_view>(
        {"sentence", "point", "bullet", "line",      "idea",  "fact",   "takeaway", "term",
         "keyword",  "word",  "satz",   "sätze",     "punkt", "phrase", "frase",    "punto",
         "ponto",    "frasi", "zin",    "предложен", "جمل",   "نقاط"});
    if (!dataOf(language).hasBlanks) return unspacedCountIn(request);
    const std::vector<FoundWord> words = wordsOf(request, language);
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

constexpr auto kSummaryPhrases = std::to_array<std::string_view>({"summar",
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
                                                                  "samen in",
                                                                  "кратко",
                                                                  "要約",
                                                                  "まとめ",
                                                                  "总结",
                                                                  "概括",
                                                                  "摘要",
                                                                  "لخص",
                                                                  "ملخص"});

bool asksForSummary(std::string_view request) {
    const auto holds = [&](std::string_view phrase) { return request.contains(phrase); };
    return std::ranges::any_of(kSummaryPhrases, holds) ||
           (request.starts_with("fass") && request.contains("zusammen"));
}

PromptIntent::Kind kindOf(std::string_view request) {
    using Kind = PromptIntent::Kind;
    if (isSmallTalk(request)) return Kind::SmallTalk;
    if (asksForWriting(request)) return Kind::Writing;
    if (containsAny(request, {"key term", "keyword", "key word", "glossary", "important term",
                              "important word", "main term", "schlüsselbegriff"})) {
        return Kind::KeyTerms;
    }
    if (asksForSummary(request)) return Kind::Summary;
    return Kind::Question;
}

/// The words of the request that say what it is about.
std::string subjectOf(const PromptIntent& intent, Language language) {
    const Lexicon& lexicon = lexiconOf(language);
    const Lexicon& english = lexiconOf(Language::English);
    std::string subject;
    for (const FoundWord& word : wordsOf(intent.request, language)) {
        const std::string_view surface =
            std::string_view(intent.request).substr(word.offset, word.length);
        const std::string lower = lowered(surface);
        const bool isInstruction =
            lexicon.requestWords.contains(lower) ||
            (language == Language::Other && english.requestWords.contains(lower));
        const bool matters = word.isContent ? !isInstruction : word.isNumber && !intent.count;
        if (!matters) continue;
        if (!subject.empty() && lexicon.data.hasBlanks) subject += ' ';
        subject += surface;
    }
    return subject;
}

/// The beginning and the end of a request of excessive length; what it wants stands in one of them.
std::string shortened(std::string_view request) {
    constexpr std::size_t longest = 6000; // bytes
    constexpr std::size_t part = 2000;    // bytes
    if (request.size() <= longest) return std::string(request);
    std::size_t tail = request.size() - part;
    while (tail < request.size() && (static_cast<unsigned char>(request[tail]) & 0xC0U) == 0x80U)
        ++tail;
    return clipped(request, part) + "\n" + std::string(request.substr(tail));
}

/// Whether there is anything in `text` but questions.
bool isMaterial(std::string_view text) {
    constexpr std::size_t longestQuestion = 3000; // bytes
    if (text.size() > longestQuestion) return true;
    return !std::ranges::all_of(readDocument(text).sentences, &Sentence::isQuestion);
}

} // namespace

std::string_view ownWords(std::string_view prompt) {
    if (const auto request = behind(prompt, "Student request:", false)) return *request;
    if (const auto request = behind(prompt, "Also address this request:", true)) return *request;
    if (prompt.starts_with("Go deeper on this excerpt")) return "";
    if (prompt.starts_with("Deep research this attached")) return "";
    if (prompt.starts_with("Please review the attached materials")) return "";
    return trimmed(prompt);
}

PromptIntent readPrompt(std::string_view prompt, Language textLanguage) {
    PromptIntent intent;
    intent.request = shortened(ownWords(prompt));
    const std::string lower = lowered(intent.request);
    const Language language = languageOfRequest(intent.request, textLanguage);
    intent.goesDeeper = trimmed(prompt).starts_with("Go deeper on this excerpt");
    intent.count = countIn(lower, language);
    intent.kind = kindOf(lower);
    intent.expected = expectationOf(intent.request, language);
    intent.subject = subjectOf(intent, language);
    const bool asksByKind = intent.expected.kind == QuestionKind::Time ||
                            intent.expected.kind == QuestionKind::Quantity;
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
        if (!isMaterial(text)) return whole;
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
