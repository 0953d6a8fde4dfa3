#include "engine/embedded/search/QueryTerms.h"

#include "engine/embedded/words/PhraseList.h"
#include "engine/embedded/words/WordKin.h"
#include "support/Utf8.h"

#include <algorithm>
#include <cmath>

namespace vorq::gateway {
namespace {

constexpr std::size_t kMostTerms = 60;
constexpr std::size_t kMostInflected = 20; // terms of which other forms are looked for
constexpr std::size_t kShortestStem = 4;   // characters that two forms of a word must share
// What a word counts for another one …
constexpr double kForm = 0.9;     // of which it is an irregular form
constexpr double kSynonym = 0.6;  // for which it is often used
constexpr double kBareVerb = 0.7; // from which it differs by a prefix
constexpr double kBareForm = 0.8; // of what it counts without prefixes

bool isUnspacedLetter(char32_t c) {
    return isHan(c) || isKatakana(c);
}

bool mixesScripts(std::string_view word) {
    bool hasHan = false;
    bool hasKana = false;
    for (std::size_t i = 0; i < word.size(); i += decodeAt(word, i).length) {
        hasHan = hasHan || isHan(decodeAt(word, i).value);
        hasKana = hasKana || isHiragana(decodeAt(word, i).value);
    }
    return hasHan && hasKana;
}

std::size_t sharedBeginning(std::string_view a, std::string_view b) {
    const auto [end, other] = std::ranges::mismatch(a, b);
    return characterCount(a.substr(0, static_cast<std::size_t>(end - a.begin())));
}

/// The consonants of an Arabic word, which its forms have in common.
std::string skeleton(std::string_view word) {
    std::string bones;
    for (std::size_t i = 0; i < word.size();) {
        const CodePoint c = decodeAt(word, i);
        const bool isWeak = c.value == 0x627 || c.value == 0x648 || c.value == 0x64A ||
                            c.value == 0x629 || c.value == 0x649 || c.value == 0x623 ||
                            c.value == 0x625 || c.value == 0x622;
        if (!isWeak) bones += word.substr(i, c.length);
        i += c.length;
    }
    return bones;
}

/// How much the word of the text counts for the word that is asked for: 1 for the same, 0 for
/// strangers, else something between.
double likeness(std::string_view asked, std::string_view word, Language language) {
    if (language == Language::Arabic) {
        const std::string bones = skeleton(asked);
        return characterCount(bones) >= 3 && bones == skeleton(word) ? 0.6 : 0;
    }
    const bool joins = language == Language::German || language == Language::Dutch;
    if (asked.empty() || word.empty() || (asked[0] != word[0] && !joins)) return 0;
    const std::size_t shorter = std::min(characterCount(asked), characterCount(word));
    const std::size_t longer = std::max(characterCount(asked), characterCount(word));
    if (shorter < kShortestStem) return 0;
    const std::size_t shared = sharedBeginning(asked, word);
    if (shared == shorter) return shorter >= 5 || longer <= shorter + 3 ? 0.6 : 0;
    if (shared >= 5 && shared * 10 >= longer * 6) return 0.45;
    const bool isCompound = joins && (word.ends_with(asked) || asked.ends_with(word));
    if (!isCompound) return 0;
    return shorter > kShortestStem ? 0.5 : 0.4;
}

/// A key, and what is left of it without a prefix that parts from its verb.
struct Verb {
    std::string_view whole;
    std::string_view bare;
};

double resemblance(const Verb& asked, const Verb& word, Language language) {
    const double whole = likeness(asked.whole, word.whole, language);
    if (asked.bare == word.bare) return std::max(whole, kBareVerb);
    const bool hasPrefix =
        asked.bare.size() < asked.whole.size() || word.bare.size() < word.whole.size();
    return hasPrefix ? std::max(whole, kBareForm * likeness(asked.bare, word.bare, language))
                     : whole;
}

} // namespace

QueryTerms::QueryTerms(const TextIndex& index, std::string_view query) : m_index(index) {
    readWords(query);
    readParts(query);
    addForms();
    dropAbsent();
}

bool QueryTerms::knows(std::string_view key) const {
    return std::ranges::find(m_terms, key, &Term::key) != m_terms.end();
}

void QueryTerms::readWords(std::string_view query) {
    WordReader reader(m_index.language());
    reader.begin(query);
    for (FoundWord word; m_terms.size() < kMostTerms && reader.next(word);) {
        // "does" is no reason to quote Jane Doe.
        if (!word.isContent && !word.isNumber) continue;
        const bool isUnspaced = isUnspacedLetter(decodeAt(query, word.offset).value) ||
                                isHiragana(decodeAt(query, word.offset).value);
        if (isUnspaced) {
            // Such as 行き先, in which characters of two scripts make one word.
            const std::string_view surface = query.substr(word.offset, word.length);
            if (mixesScripts(surface)) addPart(surface);
            continue;
        }
        if (knows(word.key)) continue;
        m_terms.push_back({.key = word.key});
    }
}

void QueryTerms::addPart(std::string_view part) {
    if (m_terms.size() >= kMostTerms || knows(part)) return;
    m_terms.push_back({.key = std::string(part), .isPart = true});
    m_hasParts = true;
}

/// What is written without blanks: Chinese characters by twos and one by one, since a dictionary
/// may cut names and new words differently in the question and in the text, and Katakana words
/// whole.
void QueryTerms::readParts(std::string_view query) {
    const Lexicon& lexicon = m_index.lexicon();
    std::string_view before;
    for (std::size_t i = 0; i < query.size();) {
        const std::size_t begin = i;
        while (i < query.size() && isKatakana(decodeAt(query, i).value))
            i += decodeAt(query, i).length;
        if (i > begin) {
            addPart(query.substr(begin, i - begin));
            before = {};
            continue;
        }
        const CodePoint c = decodeAt(query, i);
        const std::string_view character = query.substr(i, c.length);
        i += c.length;
        if (!isHan(c.value)) {
            before = {};
            continue;
        }
        if (!before.empty()) {
            const std::string_view pair(before.data(), before.size() + character.size());
            const bool asks = hasPhrase(pair, lexicon.data.question.other) ||
                              hasPhrase(pair, lexicon.data.question.quantity) ||
                              lexicon.isStop(pair);
            if (!asks) addPart(pair);
        }
        if (!lexicon.isStop(character)) addPart(character);
        before = character;
    }
}

void QueryTerms::addForm(std::uint32_t key, std::size_t term, double share) {
    if (key == KeyTable::kNone || m_index.lexicon().isStop(m_index.keys().key(key))) return;
    Meaning& meaning = m_forms.try_emplace(key, Meaning{.term = term, .share = 0}).first->second;
    if (share > meaning.share) meaning = {.term = term, .share = share};
}

/// The words that stand for a term by the tables of its language.
void QueryTerms::addKin(std::size_t term) {
    const KeyTable& keys = m_index.keys();
    const WordKin& kin = kinOf(m_index.language());
    const std::string& whole = m_terms[term].key;
    const std::string bare(kin.withoutPrefix(whole));
    for (const WordKin::Relative& relative : kin.of(whole))
        addForm(keys.find(relative.key), term, relative.isForm ? kForm : kSynonym);
    if (bare == whole) return;
    addForm(keys.find(bare), term, kBareVerb);
    for (const WordKin::Relative& relative : kin.of(bare)) {
        if (relative.isForm) addForm(keys.find(relative.key), term, kBareVerb);
    }
}

void QueryTerms::addForms() {
    const KeyTable& keys = m_index.keys();
    const WordKin& kin = kinOf(m_index.language());
    for (std::size_t i = 0; i < m_terms.size(); ++i) {
        if (m_terms[i].isPart) continue;
        const std::uint32_t same = keys.find(m_terms[i].key);
        if (same != KeyTable::kNone) m_forms[same] = {.term = i, .share = 1};
        addKin(i);
    }
    const std::size_t most = std::min(m_terms.size(), kMostInflected);
    for (std::uint32_t number = 0; number < keys.size(); ++number) {
        const std::string_view key = keys.key(number);
        const Verb word{.whole = key, .bare = kin.withoutPrefix(key)};
        for (std::size_t i = 0; i < most; ++i) {
            if (m_terms[i].isPart) continue;
            const Verb asked{.whole = m_terms[i].key, .bare = kin.withoutPrefix(m_terms[i].key)};
            const double share = resemblance(asked, word, m_index.language());
            if (share > 0) addForm(number, i, share);
        }
    }
}

/// One character says little, and next to nothing if the text has it within a pair that is looked
/// for too: a name of two characters must not count three times.
double QueryTerms::weightOfPart(std::size_t term, const std::vector<double>& with) const {
    const std::string& key = m_terms[term].key;
    if (characterCount(key) > 1) return 1;
    for (std::size_t k = 0; k < m_terms.size(); ++k) {
        const bool isPair = m_terms[k].isPart && m_terms[k].key.size() > key.size();
        if (isPair && with[k] > 0 && m_terms[k].key.contains(key)) return 0.15;
    }
    return 0.4;
}

/// Terms that do not occur go; the others get their rarity.
void QueryTerms::dropAbsent() {
    std::vector<double> with(m_terms.size(), 0);
    for (const auto& [key, meaning] : m_forms)
        with[meaning.term] += static_cast<double>(m_index.sentencesWith(key));
    if (m_hasParts) {
        for (std::size_t i = 0; i < m_index.sentences().size(); ++i) {
            const std::string_view text = m_index.text(i);
            for (std::size_t k = 0; k < m_terms.size(); ++k) {
                if (m_terms[k].isPart && text.contains(m_terms[k].key)) with[k] += 1;
            }
        }
    }
    // What only a heading names is looked for below it.
    for (const std::string& heading : m_index.headings()) {
        const Hits hits = hitsIn(heading);
        for (std::size_t k = 0; k < m_terms.size(); ++k) {
            if (with[k] == 0 && hits[k] > 0) with[k] = 1;
        }
    }
    const auto total = static_cast<double>(m_index.sentences().size());
    bool any = false;
    for (std::size_t k = 0; k < m_terms.size(); ++k) {
        if (with[k] == 0) continue;
        any = true;
        const double found = std::min(with[k], total);
        m_terms[k].rarity = std::log(1.0 + (total - found + 0.5) / (found + 0.5));
        if (m_terms[k].isPart) m_terms[k].rarity *= weightOfPart(k, with);
    }
    if (!any) m_terms.clear();
}

double QueryTerms::score(const Hits& hits, double relativeLength) const {
    constexpr double k1 = 1.2;
    constexpr double b = 0.7;
    double score = 0;
    double covered = 0;
    double all = 0;
    for (std::size_t k = 0; k < m_terms.size(); ++k) {
        all += m_terms[k].rarity;
        if (hits[k] == 0) continue;
        covered += m_terms[k].rarity * std::min(1.0, hits[k]);
        score +=
            m_terms[k].rarity * hits[k] * (k1 + 1) / (hits[k] + k1 * (1 - b + b * relativeLength));
    }
    return all == 0 ? 0 : score * (0.7 + covered / all);
}

QueryTerms::Hits QueryTerms::hitsIn(std::size_t sentence) const {
    Hits hits(m_terms.size(), 0);
    for (const Word& word : m_index.wordsIn(sentence)) {
        const auto form = m_forms.find(word.key);
        if (form != m_forms.end()) hits[form->second.term] += form->second.share;
    }
    const std::string_view text = m_index.text(sentence);
    for (std::size_t k = 0; m_hasParts && k < m_terms.size(); ++k) {
        if (m_terms[k].isPart && text.contains(m_terms[k].key)) hits[k] = 1;
    }
    return hits;
}

QueryTerms::Hits QueryTerms::hitsIn(std::string_view heading) const {
    Hits hits(m_terms.size(), 0);
    WordReader reader(m_index.language());
    reader.begin(heading);
    for (FoundWord word; reader.next(word);) {
        const auto form = m_forms.find(m_index.keys().find(word.key));
        if (form != m_forms.end()) hits[form->second.term] += form->second.share;
        for (std::size_t k = 0; k < m_terms.size(); ++k) {
            if (!m_terms[k].isPart && m_terms[k].key == word.key) hits[k] = 1;
        }
    }
    for (std::size_t k = 0; k < m_terms.size(); ++k) {
        if (m_terms[k].isPart && heading.contains(m_terms[k].key)) hits[k] = 1;
    }
    return hits;
}

} // namespace vorq::gateway
