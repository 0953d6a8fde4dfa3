#include "engine/embedded/FlashcardMaker.h"

#include "engine/embedded/StopWords.h"
#include "engine/embedded/TextIndex.h"
#include "engine/embedded/Vocabulary.h"
#include "support/Filled.h"
#include "support/Utf8.h"

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_set>

namespace vorq::gateway {
namespace {

constexpr std::size_t kMostCards = 12;
constexpr std::size_t kMostDefinitions = 8;
constexpr std::size_t kLongestSide = 400;

struct DefinitionForm {
    std::string_view verb;
    std::string_view question;
};

constexpr auto kForms = std::to_array<DefinitionForm>({
    {" is a ", "What is {}?"},
    {" is an ", "What is {}?"},
    {" is the ", "What is {}?"},
    {" are ", "What are {}?"},
    {" means ", "What does {} mean?"},
    {" refers to ", "What does {} refer to?"},
    {" is called ", "What is {}?"},
    {" is defined as ", "What is {}?"},
    {" ist ein ", "Was ist {}?"},
    {" ist eine ", "Was ist {}?"},
    {" bezeichnet ", "Was bezeichnet {}?"},
    {" est un ", "Qu'est-ce que {} ?"},
    {" est une ", "Qu'est-ce que {} ?"},
    {" es un ", "¿Qué es {}?"},
    {" es una ", "¿Qué es {}?"},
});

bool isSubject(std::string_view subject) {
    const std::vector<Word> words = wordsOf(subject);
    const auto startsWith = [&](std::initializer_list<std::string_view> openings) {
        return !words.empty() &&
               std::ranges::find(openings,
                                 lowered(subject.substr(words[0].offset, words[0].length))) !=
                   openings.end();
    };
    return !words.empty() && words.size() <= 5 && !subject.contains(',') &&
           std::ranges::any_of(words, &Word::isContent) &&
           !startsWith({"it", "this", "that", "there", "these", "those", "he",    "she", "they",
                        "we", "if",   "when", "but",   "and",   "what",  "which", "who", "here",
                        "in", "on",   "at",   "es",    "das",   "dies",  "c",     "il",  "elle"});
}

/// "Photosynthesis is a process …" as a question and its answer.
std::optional<Flashcard> definitionIn(const std::string& sentence) {
    if (sentence.ends_with('?')) return std::nullopt;
    if (const std::size_t colon = sentence.find(": "); colon != std::string::npos && colon < 60) {
        const std::string_view rest = trimmed(std::string_view(sentence).substr(colon + 2));
        const std::string subject = sentence.substr(0, colon);
        if (isSubject(subject) && wordsOf(rest).size() >= 3) {
            return Flashcard{subject, clipped(rest, kLongestSide)};
        }
    }
    const DefinitionForm* form = nullptr;
    std::size_t first = std::string::npos;
    for (const DefinitionForm& candidate : kForms) {
        const std::size_t at = sentence.find(candidate.verb);
        if (at < first) form = &candidate, first = at;
    }
    if (form == nullptr || first > 70 || !isSubject(sentence.substr(0, first))) return std::nullopt;
    std::string subject = sentence.substr(0, first);
    const std::vector<Word> words = wordsOf(subject);
    const std::string opening = lowered(subject.substr(words[0].offset, words[0].length));
    if (words[0].offset == 0 && isStopWord(opening)) subject.replace(0, words[0].length, opening);
    return Flashcard{filled(form->question, subject), clipped(sentence, kLongestSide)};
}

/// The weightiest word of a sentence that no other card asks for, if there is one; empty if none
/// carries content or hardly a word would be left around the gap.
std::string targetOf(const TextIndex& index, std::size_t sentence,
                     const std::unordered_set<std::string>& asked) {
    constexpr std::size_t fewestWords = 3;
    if (index.wordsIn(sentence).size() < fewestWords) return {};
    const Word* best = nullptr;
    double most = 0;
    for (const Word& word : index.wordsIn(sentence)) {
        const double weight = index.weight(word) * (asked.contains(word.key) ? 0.01 : 1.0);
        if (word.isContent && weight > most) best = &word, most = weight;
    }
    return best == nullptr ? std::string() : best->key;
}

} // namespace

std::vector<Flashcard> makeFlashcards(std::string_view text) {
    const TextIndex index(readDocument(text));
    std::vector<Flashcard> cards;
    std::unordered_set<std::string> fronts;
    std::unordered_set<std::size_t> used;
    const auto add = [&](Flashcard card, std::size_t sentence) {
        if (!fronts.insert(card.front).second) return;
        used.insert(sentence);
        cards.push_back(std::move(card));
    };
    for (std::size_t i = 0; i < index.sentences().size() && cards.size() < kMostDefinitions; ++i) {
        if (std::optional<Flashcard> card = definitionIn(index.sentences()[i].text)) {
            add(std::move(*card), i);
        }
    }
    const Vocabulary vocabulary(index);
    std::unordered_set<std::string> asked;
    for (const std::size_t sentence : index.keySentences(kMostCards)) {
        const std::string target = targetOf(index, sentence, asked);
        if (cards.size() >= kMostCards || target.empty() || used.contains(sentence)) continue;
        asked.insert(target);
        add({clipped(withGap(index, sentence, target), kLongestSide),
             answerFor(index, vocabulary, sentence, target)},
            sentence);
    }
    return cards;
}

} // namespace vorq::gateway
