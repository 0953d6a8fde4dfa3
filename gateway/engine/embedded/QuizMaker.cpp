#include "engine/embedded/QuizMaker.h"

#include "engine/embedded/search/SentenceSearch.h"
#include "engine/embedded/search/Vocabulary.h"
#include "support/Filled.h"
#include "support/Utf8.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <set>
#include <unordered_map>
#include <unordered_set>

namespace vorq::gateway {
namespace {

constexpr std::size_t kFewestQuestions = 4;
constexpr std::size_t kMostQuestions = 8;
constexpr std::size_t kOptions = 4;
constexpr std::size_t kWordsLookedAt = 400;
constexpr std::size_t kSentencesLookedAt = 200;
constexpr std::size_t kFewestWordsAround = 4;
constexpr std::size_t kLongestPrompt = 420;

/// Random numbers that are the same for the same text, on every machine.
class SeededNumbers {
  public:
    explicit SeededNumbers(std::string_view seed) {
        for (const char c : seed)
            m_state = (m_state ^ static_cast<unsigned char>(c)) * 1099511628211U;
    }
    /// Below `bound`, which is at least 1.
    std::size_t below(std::size_t bound) {
        m_state += 0x9E3779B97F4A7C15U;
        std::uint64_t z = m_state;
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
        return static_cast<std::size_t>((z ^ (z >> 31U)) % bound);
    }

  private:
    std::uint64_t m_state = 14695981039346656037U;
};

struct Target {
    std::size_t sentence = 0;
    std::uint32_t key = 0;
};

enum class NumberShape { None, Clock, Year, Other };

NumberShape shapeOf(const VocabularyWord& word) {
    const bool isPlain = word.surface.find_first_not_of("0123456789.,:") == std::string::npos;
    if (word.wordClass != WordClass::Number || !isPlain) return NumberShape::None;
    if (word.surface.contains(':')) return NumberShape::Clock;
    const bool isYear = word.surface.size() == 4 &&
                        (word.surface[0] == '1' || word.surface[0] == '2') &&
                        !word.surface.contains('.') && !word.surface.contains(',');
    return isYear ? NumberShape::Year : NumberShape::Other;
}

bool isPlural(const VocabularyWord& word) {
    return word.surface.ends_with('s') || word.surface.ends_with('x');
}

/// Written with an article of its own, as Arabic does.
bool hasArticle(const VocabularyWord& word) {
    return word.surface.starts_with("ال");
}

/// One character that is written without blanks says too little.
bool isOneCharacter(const VocabularyWord& word) {
    return decodeAt(word.surface, 0).length == word.surface.size();
}

bool startsUpper(const VocabularyWord& word) {
    return isUpperCase(decodeAt(word.surface, 0).value);
}

/// "station" and "stations" in one question would give the answer away, or make two right.
bool areForms(const VocabularyWord& a, const VocabularyWord& b) {
    constexpr std::size_t shared = 5; // bytes
    if (a.wordClass == WordClass::Number) return false;
    const std::string first = lowered(a.surface);
    const std::string second = lowered(b.surface);
    return first.substr(0, shared) == second.substr(0, shared) || first.contains(second) ||
           second.contains(first);
}

class QuizMaker {
  public:
    explicit QuizMaker(const QuizRequest& request)
        : m_request(request),
          m_index(readDocument(request.text)),
          m_classes(m_index),
          m_vocabulary(m_index, m_classes),
          m_numbers(request.text) {}

    Quiz make() {
        for (const VocabularyWord& word : m_vocabulary.words())
            m_byKey[word.key] = &word;
        std::set<std::string> distinct;
        for (const VocabularyWord& word : m_vocabulary.words()) {
            if (distinct.size() >= kOptions) break;
            distinct.insert(lowered(word.surface));
        }
        if (distinct.size() < kOptions) {
            throw EngineError(422, "The text is too short for a quiz. Add more of it.");
        }
        Quiz quiz;
        const std::vector<Target> targets = chooseTargets();
        for (std::size_t i = 0; i < targets.size(); ++i)
            quiz.questions.push_back(question(targets[i], i));
        quiz.primer = primer(targets);
        return quiz;
    }

  private:
    [[nodiscard]] std::vector<std::size_t> sentenceOrder() const;
    enum class Choice { Good, AnyContent, AnyWord };

    [[nodiscard]] std::vector<std::uint32_t> targetsIn(std::size_t sentence, Choice choice) const;
    [[nodiscard]] const VocabularyWord* wordOf(std::uint32_t key) const;
    [[nodiscard]] bool hasGoodOptions(std::size_t sentence, const VocabularyWord& right) const;
    [[nodiscard]] double likeness(const VocabularyWord& word, const VocabularyWord& right) const;
    [[nodiscard]] std::vector<Target> chooseTargets() const;
    [[nodiscard]] std::vector<std::string> wrongAnswers(const Target& target);
    [[nodiscard]] QuizQuestion question(const Target& target, std::size_t number);
    [[nodiscard]] bool isIn(std::size_t sentence, std::uint32_t key) const {
        return std::ranges::any_of(m_index.wordsIn(sentence),
                                   [&](const Word& word) { return word.key == key; });
    }
    /// "Date: 14 October"
    [[nodiscard]] bool isEntry(std::size_t sentence) const {
        constexpr std::size_t fewestWords = 6;
        const std::string_view text = saidIn(sentence);
        return wordsSaid(sentence) < fewestWords && (text.contains(": ") || text.contains("："));
    }
    [[nodiscard]] std::size_t wordsSaid(std::size_t sentence) const {
        return static_cast<std::size_t>(std::ranges::count_if(
            m_index.wordsIn(sentence), [](const Word& word) { return !word.isLabel; }));
    }
    [[nodiscard]] std::string_view saidIn(std::size_t sentence) const {
        return m_index.text(sentence).substr(m_index.sentences()[sentence].label);
    }
    [[nodiscard]] std::string primer(const std::vector<Target>& targets) const;

    const QuizRequest& m_request;
    TextIndex m_index;
    WordClasses m_classes;
    Vocabulary m_vocabulary;
    std::unordered_map<std::uint32_t, const VocabularyWord*> m_byKey;
    SeededNumbers m_numbers;
};

/// Sentences in the order in which they are asked about: the focus first, then what matters most.
std::vector<std::size_t> QuizMaker::sentenceOrder() const {
    std::vector<std::size_t> order = findSentences(m_index, m_request.focus, kMostQuestions);
    std::unordered_set<std::size_t> seen(order.begin(), order.end());
    const auto add = [&](std::size_t sentence) {
        if (seen.insert(sentence).second) order.push_back(sentence);
    };
    for (const std::size_t sentence : m_index.keySentences(kMostQuestions * 2))
        add(sentence);
    const std::size_t most = std::min(m_index.sentences().size(), kSentencesLookedAt);
    for (std::size_t i = 0; i < most; ++i)
        add(i);
    // A gap with hardly a word around it can only be guessed, and a gap in a question asks two
    // things; such sentences come last.
    std::vector<std::size_t> full;
    std::vector<std::size_t> thin;
    for (const std::size_t sentence : order) {
        const bool isThin = wordsSaid(sentence) < kFewestWordsAround || isEntry(sentence) ||
                            m_index.sentences()[sentence].isQuestion;
        (isThin ? thin : full).push_back(sentence);
    }
    full.insert(full.end(), thin.begin(), thin.end());
    return full;
}

const VocabularyWord* QuizMaker::wordOf(std::uint32_t key) const {
    const auto word = m_byKey.find(key);
    return word == m_byKey.end() ? nullptr : word->second;
}

/// Whether the text has enough other words that could stand in the gap.
bool QuizMaker::hasGoodOptions(std::size_t sentence, const VocabularyWord& right) const {
    std::size_t fitting = 0;
    for (const VocabularyWord& word : m_vocabulary.words()) {
        const bool isAlike = word.wordClass == right.wordClass && shapeOf(word) == shapeOf(right) &&
                             startsUpper(word) == startsUpper(right) && !areForms(word, right);
        if (!isAlike || isIn(sentence, word.key)) {
            continue;
        }
        if (++fitting >= kOptions - 1) return true;
    }
    return false;
}

/// The keys worth asking for in a sentence, best first.
std::vector<std::uint32_t> QuizMaker::targetsIn(std::size_t sentence, Choice choice) const {
    std::vector<const Word*> words;
    for (const Word& word : m_index.wordsIn(sentence)) {
        const VocabularyWord* right = wordOf(word.key);
        if (right == nullptr || word.isLabel) continue;
        if (choice == Choice::Good && continuesNumeral(m_index, sentence, word)) continue;
        const bool isThing =
            (word.isContent && !word.isPale && right->wordClass != WordClass::Other) ||
            (shapeOf(*right) != NumberShape::None && word.length > 1);
        const bool isWanted =
            choice == Choice::AnyWord ||
            (choice == Choice::AnyContent && word.isContent && !isOneCharacter(*right)) ||
            (isThing && hasGoodOptions(sentence, *right));
        if (isWanted) words.push_back(&word);
    }
    std::ranges::sort(words, [&](const Word* a, const Word* b) {
        return std::pair(-m_index.weight(*a), a->offset) <
               std::pair(-m_index.weight(*b), b->offset);
    });
    std::vector<std::uint32_t> keys;
    for (const Word* word : words)
        keys.push_back(word->key);
    return keys;
}

std::vector<Target> QuizMaker::chooseTargets() const {
    const std::vector<std::size_t> order = sentenceOrder();
    const std::size_t wanted =
        std::clamp(m_index.sentences().size() / 2, kFewestQuestions + 1, kMostQuestions);
    std::vector<Target> targets;
    std::unordered_set<std::uint32_t> used;
    const auto takeFrom = [&](std::size_t sentence, Choice choice, std::size_t enough) {
        for (const std::uint32_t key : targetsIn(sentence, choice)) {
            if (targets.size() >= enough) return;
            if (!used.insert(key).second) continue;
            targets.push_back({sentence, key});
            return;
        }
    };
    for (const std::size_t sentence : order) {
        if (targets.size() >= wanted) break;
        const bool isFit = !m_index.sentences()[sentence].isQuestion && !isEntry(sentence);
        if (isFit) takeFrom(sentence, Choice::Good, wanted);
    }
    // A thin text: several gaps in one sentence, and at last any word at all.
    for (const Choice choice : {Choice::Good, Choice::AnyContent, Choice::AnyWord}) {
        for (std::size_t round = 0; round < kFewestQuestions; ++round) {
            for (const std::size_t sentence : order) {
                if (targets.size() >= kFewestQuestions) return targets;
                takeFrom(sentence, choice, kFewestQuestions);
            }
        }
    }
    if (targets.size() < kFewestQuestions) {
        throw EngineError(422, "The text is too short for a quiz. Add more of it.");
    }
    return targets;
}

double QuizMaker::likeness(const VocabularyWord& word, const VocabularyWord& right) const {
    const double lengths = std::abs(static_cast<double>(word.surface.size()) -
                                    static_cast<double>(right.surface.size()));
    const auto ending = [](const VocabularyWord& w) { return w.surface.back(); };
    return (word.wordClass == right.wordClass ? 6.0 : 0.0) +
           (shapeOf(word) == shapeOf(right) ? 6.0 : 0.0) +
           (word.isContent == right.isContent ? 4.0 : 0.0) +
           (startsUpper(word) == startsUpper(right) ? 4.0 : 0.0) +
           (hasArticle(word) == hasArticle(right) ? 4.0 : 0.0) +
           (isPlural(word) == isPlural(right) ? 4.0 : 0.0) +
           (ending(word) == ending(right) ? 2.0 : 0.0) + 0.3 * word.weight - 0.15 * lengths -
           (areForms(word, right) ? 8.0 : 0.0);
}

/// Three words of the text that could stand in the gap by their look, but do not.
std::vector<std::string> QuizMaker::wrongAnswers(const Target& target) {
    const VocabularyWord& right = *wordOf(target.key);
    std::unordered_set<std::uint32_t> inSentence;
    for (const Word& word : m_index.wordsIn(target.sentence))
        inSentence.insert(word.key);
    std::vector<std::pair<double, const VocabularyWord*>> candidates;
    std::set<std::string> seen{lowered(right.surface)};
    for (const VocabularyWord& word : m_vocabulary.words()) {
        if (candidates.size() >= kWordsLookedAt) break;
        if (!seen.insert(lowered(word.surface)).second) continue;
        candidates.emplace_back(
            likeness(word, right) - (inSentence.contains(word.key) ? 10.0 : 0.0), &word);
    }
    std::ranges::sort(candidates, [&](const auto& a, const auto& b) {
        return a.first != b.first ? a.first > b.first : a.second < b.second;
    });
    // Among the likeliest ones, so that the same three do not stand in every question.
    const double best = candidates.front().first;
    std::size_t pool = kOptions - 1;
    while (pool < std::min<std::size_t>(candidates.size(), 9) &&
           candidates[pool].first > best - 3) {
        ++pool;
    }
    std::vector<std::string> wrong;
    while (wrong.size() < kOptions - 1) {
        const std::size_t pick = m_numbers.below(pool--);
        wrong.push_back(candidates[pick].second->surface);
        candidates.erase(candidates.begin() + static_cast<std::ptrdiff_t>(pick));
    }
    return wrong;
}

QuizQuestion QuizMaker::question(const Target& target, std::size_t number) {
    QuizQuestion question;
    const Phrases& phrases = m_index.lexicon().data.phrases;
    question.prompt = std::string(phrases.gapQuestion) + "\n\n" +
                      clipped(withGap(m_index, target.sentence, target.key), kLongestPrompt);
    question.options = wrongAnswers(target);
    // Every place in turn, beginning at one that depends on the text.
    question.answerIndex = (number + m_request.text.size()) % kOptions;
    question.options.insert(question.options.begin() +
                                static_cast<std::ptrdiff_t>(question.answerIndex),
                            answerFor(m_index, m_classes, target.sentence, target.key));
    question.explanation =
        filled(phrases.explanation, clipped(saidIn(target.sentence), kLongestPrompt));
    return question;
}

std::string QuizMaker::primer(const std::vector<Target>& targets) const {
    const Phrases& phrases = m_index.lexicon().data.phrases;
    std::string text = filled(phrases.primer, targets.size());
    const auto gives = [&](std::size_t sentence) {
        return std::ranges::any_of(targets, [&](const Target& target) {
            return target.sentence == sentence || isIn(sentence, target.key);
        });
    };
    for (const std::size_t sentence : m_index.keySentences(kMostQuestions)) {
        const bool isThin = wordsSaid(sentence) < kFewestWordsAround || isEntry(sentence);
        if (isThin || m_index.sentences()[sentence].isQuestion || gives(sentence)) continue;
        const std::string_view blank = m_index.lexicon().data.hasBlanks ? " " : "";
        return text + std::string(blank) +
               filled(phrases.toBegin, clipped(saidIn(sentence), kLongestPrompt));
    }
    return text;
}

} // namespace

Quiz makeQuiz(const QuizRequest& request) {
    return QuizMaker(request).make();
}

} // namespace vorq::gateway
