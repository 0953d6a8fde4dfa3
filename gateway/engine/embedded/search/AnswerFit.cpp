#include "engine/embedded/search/AnswerFit.h"

#include "engine/embedded/words/PhraseList.h"
#include "support/Utf8.h"

#include <algorithm>
#include <string>

namespace vorq::gateway {
namespace {

/// What the sentence says, without who says it.
std::string_view said(const TextIndex& index, std::size_t sentence) {
    return index.text(sentence).substr(index.sentences()[sentence].label);
}

bool isTimeWord(const TextIndex& index, std::size_t sentence, const Word& word) {
    const std::string_view surface = index.surface(sentence, word);
    if (word.isNumber) {
        const bool isYear = surface.size() == 4 && (surface[0] == '1' || surface[0] == '2') &&
                            surface.find_first_not_of("0123456789") == std::string_view::npos;
        const bool isDate =
            std::ranges::count(surface, '-') + std::ranges::count(surface, '.') == 2;
        return isYear || isDate || surface.contains(':');
    }
    const std::string lower = lowered(surface);
    // "May" is a month, "may" is none.
    const bool needsCapital =
        index.language() == Language::English || index.language() == Language::German;
    return index.lexicon().roleOf(lower).isCalendar && (word.isCapitalised || !needsCapital);
}

/// Two capitalised words running, or a capital where the language has none but for names.
bool holdsName(const TextIndex& index, std::size_t sentence, const QueryTerms& asked) {
    const std::span<const Word> words = index.wordsIn(sentence);
    const bool isGerman = index.language() == Language::German;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (!words[i].isCapitalised || !words[i].isContent || words[i].isPale) continue;
        if (asked.has(words[i].key)) continue;
        const bool follows = i > 0 && words[i].followsDirectly && words[i - 1].isCapitalised &&
                             words[i - 1].isContent && !words[i - 1].isLabel;
        if (follows || (i > 0 && !isGerman)) return true;
    }
    return false;
}

/// "in Soria": a name right behind a word that says where.
bool namesPlace(const TextIndex& index, std::size_t sentence) {
    const Lexicon& lexicon = index.lexicon();
    bool isBehind = false;
    for (const Word& word : index.wordsIn(sentence)) {
        const std::string lower = lowered(index.surface(sentence, word));
        const bool isName = word.isCapitalised && word.isContent && !word.isPale;
        if (isBehind && isName && word.followsDirectly) return true;
        isBehind = !word.isLabel && lexicon.placePrepositions.contains(lower);
    }
    return false;
}

double fitPlace(const TextIndex& index, std::size_t sentence, const std::string& text) {
    const bool hasPhraseOfPlace = hasPhrase(text, index.lexicon().data.answer.place);
    if (namesPlace(index, sentence)) return hasPhraseOfPlace ? 1.8 : 1.4;
    return hasPhraseOfPlace ? 1.45 : 0.9;
}

double fitQuantity(const Expectation& expected, const TextIndex& index, std::size_t sentence,
                   const std::string& text) {
    const AnswerWords& words = index.lexicon().data.answer;
    const bool hasNumber = holdsNumber(index, sentence) || hasPhrase(text, words.numbers) ||
                           hasPhrase(text, words.frequency);
    const bool hasUnit = (expected.isMoney && (hasPhrase(text, words.money) || text.contains("€") ||
                                               text.contains("£") || text.contains('$'))) ||
                         (expected.isDuration && hasPhrase(text, words.duration)) ||
                         (expected.isLength && hasPhrase(text, words.length)) ||
                         (expected.isFrequency && hasPhrase(text, words.frequency));
    const bool wantsUnit =
        expected.isMoney || expected.isDuration || expected.isLength || expected.isFrequency;
    if (hasUnit) return hasNumber ? 2.2 : 1.5;
    if (!hasNumber) return 0.8;
    return wantsUnit ? 1.3 : 1.7;
}

double fitTime(const TextIndex& index, std::size_t sentence, const std::string& text) {
    const bool hasDate = holdsTime(index, sentence);
    const bool hasWord = hasPhrase(text, index.lexicon().data.answer.time);
    if (hasDate) return hasWord ? 2.0 : 1.5;
    return hasWord ? 1.45 : 0.85;
}

double fitPerson(const TextIndex& index, std::size_t sentence, const std::string& text,
                 const QueryTerms& asked) {
    const AnswerWords& words = index.lexicon().data.answer;
    const bool isSpeaker =
        index.sentences()[sentence].label > 0 && hasPhrase(text, words.firstPerson);
    const double byWord = hasPhrase(text, words.person) || isSpeaker ? 1.35 : 1;
    return byWord * (holdsName(index, sentence, asked) ? 1.5 : 0.85);
}

double fitKind(const Expectation& expected, const TextIndex& index, std::size_t sentence,
               const std::string& text, const QueryTerms& asked) {
    const AnswerWords& words = index.lexicon().data.answer;
    switch (expected.kind) {
    case QuestionKind::Time:
        return fitTime(index, sentence, text);
    case QuestionKind::Quantity:
        return fitQuantity(expected, index, sentence, text);
    case QuestionKind::Person:
        return fitPerson(index, sentence, text, asked);
    case QuestionKind::Reason:
        if (hasPhrase(text, words.reason)) return 2.2;
        return hasPhrase(text, words.weakReason) ? 1.8 : 0.85;
    case QuestionKind::Place:
        return fitPlace(index, sentence, text);
    case QuestionKind::Definition:
        return hasPhrase(text, words.definition) ? 1.4 : 1;
    case QuestionKind::Permission:
        return hasPhrase(text, words.permission) ? 1.4 : 1;
    case QuestionKind::Other:
        return 1;
    }
    return 1;
}

} // namespace

bool holdsTime(const TextIndex& index, std::size_t sentence) {
    return std::ranges::any_of(index.wordsIn(sentence), [&](const Word& word) {
        return !word.isLabel && isTimeWord(index, sentence, word);
    });
}

bool holdsNumber(const TextIndex& index, std::size_t sentence) {
    return std::ranges::any_of(index.wordsIn(sentence),
                               [](const Word& word) { return word.isNumber; });
}

double fit(const Expectation& expected, const TextIndex& index, std::size_t sentence,
           const QueryTerms& asked) {
    const std::string text = lowered(said(index, sentence));
    const bool isNegative =
        expected.isNegative && hasPhrase(text, index.lexicon().data.answer.negation);
    return fitKind(expected, index, sentence, text, asked) * (isNegative ? 2.2 : 1);
}

} // namespace vorq::gateway
