#include "engine/embedded/search/WordClasses.h"

#include "support/Utf8.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

namespace vorq::gateway {
namespace {

constexpr int kEnoughEvidence = 24; // places that are looked at for one Chinese word

void increase(std::uint16_t& count) {
    if (count < std::numeric_limits<std::uint16_t>::max()) ++count;
}

bool endsLikeOneOf(std::string_view word, std::string_view endings) {
    while (!endings.empty()) {
        const std::size_t blank = std::min(endings.find(' '), endings.size());
        const std::string_view ending = endings.substr(0, blank);
        if (!ending.empty() && word.size() > ending.size() + 2 && word.ends_with(ending)) {
            return true;
        }
        endings.remove_prefix(std::min(blank + 1, endings.size()));
    }
    return false;
}

bool isUnspacedLanguage(Language language) {
    return language == Language::Chinese || language == Language::Japanese;
}

bool hasArabicArticle(std::string_view word) {
    return word.starts_with("ال");
}

bool isAmong(std::string_view word, std::string_view words) {
    for (std::size_t at = word.empty() ? words.npos : words.find(word); at != words.npos;
         at = words.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        const bool isWhole =
            (at == 0 || words[at - 1] == ' ') && (end == words.size() || words[end] == ' ');
        if (isWhole) return true;
    }
    return false;
}

/// Chinese words that begin or end with a character that only carries grammar.
bool holdsGrammar(std::string_view word) {
    static constexpr std::u32string_view first =
        U"请每如共几不没可将被把很最更新这那他她它我你其各该本已正从向对和与或而并又也都就还只先再";
    static constexpr std::u32string_view last = U"的了到着过有内里上下中外前后时得地们是在";
    const std::size_t end = word.size() >= 3 ? word.size() - 3 : 0;
    return first.contains(decodeAt(word, 0).value) || last.contains(decodeAt(word, end).value);
}

/// In these an adjective stands before its noun, so that the last word of a group is the noun.
bool nounComesLast(Language language) {
    return language == Language::English || language == Language::Dutch ||
           language == Language::German || language == Language::Russian;
}

} // namespace

WordClasses::WordClasses(const TextIndex& index)
    : m_index(index),
      m_evidence(index.keys().size()),
      m_classes(index.keys().size(), WordClass::Other) {
    for (std::size_t i = 0; i < index.sentences().size(); ++i)
        look(i);
    m_small.resize(m_classes.size());
    m_things.resize(m_classes.size());
    for (std::size_t key = 0; key < m_classes.size(); ++key) {
        m_classes[key] = decide(m_evidence[key]);
        m_small[key] = m_evidence[key].lower > 0;
        // German writes all nouns with a capital, though it need not show which is a name.
        const bool isGermanNoun = index.language() == Language::German &&
                                  m_evidence[key].capital > 0 && !m_evidence[key].isPale;
        m_things[key] =
            m_classes[key] == WordClass::Noun || m_classes[key] == WordClass::Name || isGermanNoun;
    }
    m_evidence = {};
}

void WordClasses::look(std::size_t sentence) {
    const std::span<const Word> words = m_index.wordsIn(sentence);
    std::size_t first = 0;
    while (first < words.size() && words[first].isLabel)
        ++first;
    for (std::size_t i = first; i < words.size(); ++i) {
        const Word& word = words[i];
        Evidence& evidence = m_evidence[word.key];
        if (word.isNumber) evidence.isNumber = true;
        if (!word.isContent) continue;
        if (i > first && word.isCapitalised) increase(evidence.capital);
        if (!word.isCapitalised) increase(evidence.lower);
        // "Frau Vogt", "Karin Vogt"; a German noun has a word that is small before it.
        const bool isNamePart = i > first && word.isCapitalised && word.followsDirectly &&
                                words[i - 1].isCapitalised && words[i - 1].isContent;
        evidence.isNamePart = evidence.isNamePart || isNamePart;
        if (!std::exchange(evidence.isKnown, true)) lookAtForm(sentence, word, evidence);
        const bool isUndecided = evidence.noun + evidence.verb < kEnoughEvidence;
        if (isUndecided && isUnspacedLanguage(m_index.language())) lookAtUnspaced(sentence, i);
        // An adjective has the article too, but stands behind a noun that has it.
        const bool isArabicNoun =
            m_index.language() == Language::Arabic &&
            hasArabicArticle(m_index.surface(sentence, word)) &&
            (i == 0 || !hasArabicArticle(m_index.surface(sentence, words[i - 1])));
        if (isArabicNoun) increase(evidence.noun);
    }
    for (std::size_t begin = first; begin < words.size();) {
        std::size_t end = begin;
        while (end < words.size() && words[end].isContent && !words[end].isPale &&
               (end == begin || words[end].followsDirectly)) {
            ++end;
        }
        const bool isDetermined = begin > first && words[begin].followsDirectly &&
                                  (words[begin - 1].precedesNoun || words[begin - 1].isNumber);
        if (end > begin) lookAtRun(sentence, begin, end, isDetermined);
        begin = std::max(end, begin + 1);
    }
}

/// What the look of a word says, of which the first form of it is taken.
void WordClasses::lookAtForm(std::size_t sentence, const Word& word, Evidence& evidence) const {
    const std::string_view surface = m_index.surface(sentence, word);
    const std::string lower = lowered(surface);
    const std::size_t shortest = isUnspacedLanguage(m_index.language()) ? 2 : 3;
    evidence.isPale = word.isPale && withoutPossessive(surface).size() == surface.size();
    evidence.isShort = characterCount(surface) < shortest;
    evidence.looksLikeVerb = endsLikeOneOf(lower, m_index.lexicon().data.verbEndings);
}

/// In Chinese and Japanese the grammar words on both sides tell what stands between them.
void WordClasses::lookAtUnspaced(std::size_t sentence, std::size_t place) {
    const std::span<const Word> words = m_index.wordsIn(sentence);
    const Word& word = words[place];
    const auto neighbour = [&](std::size_t at) {
        return at < words.size() ? m_index.surface(sentence, words[at]) : std::string_view{};
    };
    const std::string_view before = place == 0 ? std::string_view{} : neighbour(place - 1);
    const std::string_view behind = neighbour(place + 1);
    Evidence& evidence = m_evidence[word.key];
    if (m_index.language() == Language::Japanese) {
        const std::string_view surface = m_index.surface(sentence, word);
        const bool endsInGrammar = isHiragana(decodeAt(surface, surface.size() - 3).value);
        if (endsInGrammar) increase(evidence.verb);
        if (isAmong(behind, "は が を に で の と も へ や から まで より です")) {
            increase(evidence.noun);
        }
        return;
    }
    if (isAmong(before,
                "的 个 只 本 座 条 件 位 张 名 由 在 从 被 把 向 和 与 为 对 到 用 这 该") ||
        isAmong(behind, "的 是 在 里 和 与 由 为 将 从 被 说 也 都 最 有 来自 提供 负责")) {
        increase(evidence.noun);
    }
    if (isAmong(before, "不 没 要 可以 将 会 能 开始 来 去 请 不要 不能 已 已经 进行 上 主要") ||
        isAmong(behind, "了 着 过 到 得")) {
        increase(evidence.verb);
    }
    if (holdsGrammar(m_index.surface(sentence, word))) increase(evidence.verb);
}

/// Content words that stand together, behind an article or not.
void WordClasses::lookAtRun(std::size_t sentence, std::size_t begin, std::size_t end,
                            bool isDetermined) {
    if (!isDetermined) return;
    const std::span<const Word> words = m_index.wordsIn(sentence);
    if (!nounComesLast(m_index.language())) {
        // "las tengo" is a pronoun and a verb: a noun would have the plural too.
        const std::string_view noun = m_index.surface(sentence, words[begin]);
        const bool isMany = m_index.surface(sentence, words[begin - 1]).ends_with('s');
        if (!isMany || noun.ends_with('s') || noun.ends_with('x')) {
            increase(m_evidence[words[begin].key].noun);
        }
        return;
    }
    const std::string_view endings = m_index.lexicon().data.verbEndings;
    std::size_t last = end - 1;
    while (last > begin && endsLikeOneOf(lowered(m_index.surface(sentence, words[last])), endings))
        --last;
    // "a cave breathes": behind "a" stands no plural.
    const std::string one = lowered(m_index.surface(sentence, words[begin - 1]));
    const bool isOne = m_index.language() == Language::English &&
                       (one == "a" || one == "an" || one == "each" || one == "every");
    if (isOne && last > begin && m_index.surface(sentence, words[last]).ends_with('s') &&
        !m_index.surface(sentence, words[last]).ends_with("ss")) {
        --last;
    }
    // "of volcanoes cools": what stands behind a plural is a verb.
    for (std::size_t i = begin; m_index.language() == Language::English && i < last; ++i) {
        const std::string_view word = m_index.surface(sentence, words[i]);
        if (word.ends_with('s') && !word.ends_with("ss") && !word.ends_with("'s")) last = i;
    }
    if (last - begin <= 2) increase(m_evidence[words[last].key].noun);
}

WordClass WordClasses::decide(const Evidence& evidence) const {
    if (evidence.isNumber) return WordClass::Number;
    if (evidence.isPale || evidence.isShort) return WordClass::Other;
    switch (m_index.language()) {
    case Language::German:
        if (evidence.capital == 0) return WordClass::Other;
        if (evidence.isNamePart) return WordClass::Name;
        return evidence.noun > 0 ? WordClass::Noun : WordClass::Other;
    case Language::Chinese:
    case Language::Japanese:
        return evidence.noun > evidence.verb ? WordClass::Noun : WordClass::Other;
    case Language::Other:
        return WordClass::Noun;
    case Language::Russian:
        return evidence.looksLikeVerb ? WordClass::Other : WordClass::Noun;
    default:
        break;
    }
    if (evidence.capital > 0 && evidence.lower == 0) return WordClass::Name;
    const bool isNoun = evidence.noun > (evidence.looksLikeVerb ? 1 : 0);
    return isNoun ? WordClass::Noun : WordClass::Other;
}

} // namespace vorq::gateway
