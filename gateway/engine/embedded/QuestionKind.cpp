#include "engine/embedded/QuestionKind.h"

#include "engine/embedded/StopWords.h"
#include "support/Utf8.h"

#include <algorithm>
#include <initializer_list>
#include <string>

namespace vorq::gateway {
namespace {

/// Whether one of the phrases stands in `text` as whole words; `text` is lower-cased.
bool hasPhrase(std::string_view text, std::initializer_list<std::string_view> phrases) {
    const auto isEdge = [&](std::size_t i) {
        return i >= text.size() || !isWordCharacter(decodeAt(text, i).value);
    };
    return std::ranges::any_of(phrases, [&](std::string_view phrase) {
        // Chinese and Japanese put no blanks between words.
        if (static_cast<unsigned char>(phrase.front()) >= 0xE3) return text.contains(phrase);
        for (std::size_t at = text.find(phrase); at != std::string_view::npos;
             at = text.find(phrase, at + 1)) {
            if ((at == 0 || isEdge(at - 1)) && isEdge(at + phrase.size())) return true;
        }
        return false;
    });
}

} // namespace

QuestionKind questionKind(std::string_view question) {
    const std::string text = lowered(clipped(question, 2000));
    if (hasPhrase(text,
                  {"when", "what year", "which year", "date", "dates", "deadline", "deadlines",
                   "wann", "quand", "cuándo", "いつ", "何年", "什么时候", "何时", "哪年"})) {
        return QuestionKind::Time;
    }
    if (hasPhrase(text, {"how many", "how much", "how long", "how far", "number of", "wie viele",
                         "wie viel", "combien", "cuántos", "cuántas", "numbers", "figures", "多少",
                         "几个", "いくつ", "何人"})) {
        return QuestionKind::Quantity;
    }
    if (hasPhrase(text, {"why", "reason", "cause", "warum", "weshalb", "pourquoi", "por qué",
                         "为什么", "なぜ", "どうして"})) {
        return QuestionKind::Reason;
    }
    if (hasPhrase(text, {"who", "whose", "whom", "wer", "wem", "qui", "quién", "谁", "誰"})) {
        return QuestionKind::Person;
    }
    if (hasPhrase(text,
                  {"what is", "what's", "what are", "define", "definition", "meaning", "was ist",
                   "was sind", "qu'est-ce", "qué es", "什么是", "是什么", "とは"})) {
        return QuestionKind::Definition;
    }
    return QuestionKind::Other;
}

bool holds(QuestionKind kind, std::string_view sentence, const std::vector<Word>& words) {
    const auto isYear = [&](const Word& word) {
        return word.isNumber && word.length == 4 &&
               (sentence[word.offset] == '1' || sentence[word.offset] == '2');
    };
    const auto isDate = [&](const Word& word) {
        const std::string_view surface = sentence.substr(word.offset, word.length);
        const bool isNumeric =
            word.isNumber &&
            std::ranges::count(surface, '-') + std::ranges::count(surface, '.') == 2;
        return isNumeric || isYear(word) ||
               (word.isCapitalised && isCalendarWord(lowered(surface))) ||
               (!word.isCapitalised && isCalendarWord(surface));
    };
    if (kind == QuestionKind::Time) return std::ranges::any_of(words, isDate);
    return kind == QuestionKind::Quantity && std::ranges::any_of(words, &Word::isNumber);
}

double fit(QuestionKind kind, std::string_view sentence, const std::vector<Word>& words) {
    const auto has = [&](std::initializer_list<std::string_view> phrases) {
        return hasPhrase(lowered(sentence), phrases);
    };
    switch (kind) {
    case QuestionKind::Time:
    case QuestionKind::Quantity:
        return holds(kind, sentence, words) ? 1.6 : 1;
    case QuestionKind::Reason:
        if (has({"because", "due to", "caused by", "weil", "parce que", "porque", "因为", "ため",
                 "から"})) {
            return 2.2;
        }
        return has({"since", "therefore", "so that", "da", "denn", "car", "因此"}) ? 1.4 : 1;
    case QuestionKind::Person: {
        const auto named = [](const Word& word) { return word.isCapitalised && word.offset > 0; };
        return std::ranges::any_of(words, named) ? 1.2 : 1;
    }
    case QuestionKind::Definition:
        return has({"is a", "is an", "is the", "are", "means", "refers to", "is called", "ist ein",
                    "ist eine", "bezeichnet", "est un", "est une", "es un", "es una"})
                   ? 1.4
                   : 1;
    case QuestionKind::Other:
        return 1;
    }
    return 1;
}

} // namespace vorq::gateway
