#include "engine/embedded/QuestionKind.h"

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
    if (hasPhrase(text, {"when", "what year", "which year", "date", "wann", "quand", "cuándo"})) {
        return QuestionKind::Time;
    }
    if (hasPhrase(text, {"how many", "how much", "how long", "how far", "number of", "wie viele",
                         "wie viel", "combien", "cuántos", "cuántas"})) {
        return QuestionKind::Quantity;
    }
    if (hasPhrase(text, {"why", "reason", "cause", "warum", "weshalb", "pourquoi", "por qué"})) {
        return QuestionKind::Reason;
    }
    if (hasPhrase(text, {"who", "whose", "whom", "wer", "wem", "qui", "quién"})) {
        return QuestionKind::Person;
    }
    if (hasPhrase(text, {"what is", "what's", "what are", "define", "definition", "meaning",
                         "was ist", "was sind", "qu'est-ce", "qué es"})) {
        return QuestionKind::Definition;
    }
    return QuestionKind::Other;
}

double fit(QuestionKind kind, std::string_view sentence, const std::vector<Word>& words) {
    const auto has = [&](std::initializer_list<std::string_view> phrases) {
        return hasPhrase(lowered(sentence), phrases);
    };
    switch (kind) {
    case QuestionKind::Time:
    case QuestionKind::Quantity:
        return std::ranges::any_of(words, &Word::isNumber) ? 1.4 : 1;
    case QuestionKind::Reason:
        return has({"because", "since", "therefore", "due to", "so that", "caused by", "weil", "da",
                    "denn", "parce", "car", "porque"})
                   ? 1.4
                   : 1;
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
