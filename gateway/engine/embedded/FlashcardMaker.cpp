#include "engine/embedded/FlashcardMaker.h"

#include "engine/embedded/search/Vocabulary.h"
#include "engine/embedded/words/PhraseList.h"
#include "support/Filled.h"
#include "support/Utf8.h"

#include <algorithm>
#include <optional>
#include <unordered_set>

namespace vorq::gateway {
namespace {

constexpr std::size_t kMostCards = 12;
constexpr std::size_t kMostDefinitions = 8;
constexpr std::size_t kFewestCards = 4;
constexpr std::size_t kLongestSide = 400;

struct DefinitionForm {
    std::string_view verb;
    std::string_view question;
};

/// "is a=>What is {}?"
DefinitionForm formOf(std::string_view entry) {
    const std::size_t arrow = entry.find("=>");
    return {.verb = entry.substr(0, arrow), .question = entry.substr(arrow + 2)};
}

bool isSubject(std::string_view subject, const TextIndex& index) {
    constexpr std::size_t mostWords = 5;
    const std::vector<FoundWord> words = wordsOf(subject, index.language());
    if (words.empty() || words.size() > mostWords || subject.contains(',') ||
        subject.contains("，") || subject.contains("、")) {
        return false;
    }
    const Lexicon& lexicon = index.lexicon();
    const std::string opening = lowered(subject.substr(words[0].offset, words[0].length));
    const bool isBare = lexicon.isStop(opening) && !lexicon.roleOf(opening).isDeterminer;
    const bool pointsBack = lexicon.pronouns.contains(opening);
    return !isBare && !pointsBack && std::ranges::any_of(words, [](const FoundWord& word) {
        return word.isContent && !word.isPale;
    });
}

/// "Osmosis: the movement of water …" in two.
std::optional<Flashcard> labelledIn(std::string_view sentence, const TextIndex& index) {
    constexpr std::size_t longestTerm = 60; // bytes
    constexpr std::size_t fewestWords = 3;
    for (std::string_view mark : {" : ", ": ", "："}) {
        const std::size_t at = sentence.find(mark);
        if (at == std::string_view::npos || at > longestTerm) continue;
        const std::string_view rest = trimmed(sentence.substr(at + mark.size()));
        const std::string_view subject = sentence.substr(0, at);
        if (!isSubject(subject, index) || wordsOf(rest, index.language()).size() < fewestWords) {
            return std::nullopt;
        }
        return Flashcard{std::string(subject), clipped(rest, kLongestSide)};
    }
    return std::nullopt;
}

/// "Photosynthesis is a process …" as a question and its answer.
std::optional<Flashcard> definitionIn(std::size_t number, const TextIndex& index) {
    constexpr std::size_t longestSubject = 70; // bytes
    if (index.sentences()[number].isQuestion || index.sentences()[number].label > 0) {
        return std::nullopt;
    }
    const std::string_view sentence = index.text(number);
    if (std::optional<Flashcard> card = labelledIn(sentence, index)) return card;
    const LanguageData& data = index.lexicon().data;
    std::string_view question;
    std::size_t first = std::string_view::npos;
    anyPhrase(data.definitions, [&](std::string_view entry) {
        if (entry.empty()) return true;
        const DefinitionForm form = formOf(entry);
        const std::string verb =
            data.hasBlanks ? " " + std::string(form.verb) + " " : std::string(form.verb);
        const std::size_t at = sentence.find(verb);
        if (at < first) first = at, question = form.question;
        return false;
    });
    if (first > longestSubject || !isSubject(sentence.substr(0, first), index)) {
        return std::nullopt;
    }
    std::string subject(sentence.substr(0, first));
    const std::vector<FoundWord> words = wordsOf(subject, index.language());
    const std::string opening = lowered(subject.substr(0, words[0].length));
    if (words[0].offset == 0 && index.lexicon().roleOf(opening).isDeterminer) {
        subject.replace(0, words[0].length, opening);
    }
    return Flashcard{filled(question, subject), clipped(sentence, kLongestSide)};
}

/// The weightiest noun, name or number of a sentence that no other card asks for, else any content
/// word that says something; none if hardly a word would be left around the gap.
std::optional<std::uint32_t> targetOf(const TextIndex& index, const WordClasses& classes,
                                      std::size_t sentence,
                                      const std::unordered_set<std::uint32_t>& asked) {
    constexpr std::size_t fewestWords = 3;
    constexpr std::size_t fewestWordsOfEntry = 6;
    const std::span<const Word> words = index.wordsIn(sentence);
    const auto said = static_cast<std::size_t>(
        std::ranges::count_if(words, [](const Word& word) { return !word.isLabel; }));
    if (said < fewestWords || index.sentences()[sentence].isQuestion) return std::nullopt;
    // "Date: 14 October"
    const bool isEntry = said < fewestWordsOfEntry && (index.text(sentence).contains(": ") ||
                                                       index.text(sentence).contains("："));
    if (isEntry) return std::nullopt;
    std::optional<std::uint32_t> best;
    double most = 0;
    for (const Word& word : words) {
        const std::string_view surface = index.surface(sentence, word);
        const bool isOneCharacter = decodeAt(surface, 0).length == surface.size();
        if (!word.isContent || word.isPale || isOneCharacter) continue;
        if (continuesNumeral(index, sentence, word)) continue;
        const double weight = index.weight(word) * (asked.contains(word.key) ? 0.01 : 1.0) *
                              (classes.isThing(word.key) ? 4.0 : 1.0);
        if (weight > most) best = word.key, most = weight;
    }
    return best;
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
        if (std::optional<Flashcard> card = definitionIn(i, index)) add(std::move(*card), i);
    }
    const WordClasses classes(index);
    std::unordered_set<std::uint32_t> asked;
    std::vector<std::size_t> second;
    const auto addGap = [&](std::size_t sentence, bool anyWord) {
        if (cards.size() >= kMostCards || used.contains(sentence)) return;
        const std::optional<std::uint32_t> target = targetOf(index, classes, sentence, asked);
        if (!target) return;
        // Verbs and adjectives only where a text has little else.
        if (!anyWord && !classes.isThing(*target)) {
            second.push_back(sentence);
            return;
        }
        asked.insert(*target);
        add({clipped(withGap(index, sentence, *target), kLongestSide),
             answerFor(index, classes, sentence, *target)},
            sentence);
    };
    for (const std::size_t sentence : index.keySentences(kMostCards))
        addGap(sentence, false);
    for (const std::size_t sentence : std::vector(second)) {
        if (cards.size() < kFewestCards) addGap(sentence, true);
    }
    return cards;
}

} // namespace vorq::gateway
