#include "engine/embedded/QuizMaker.h"

#include "engine/embedded/TextIndex.h"
#include "engine/embedded/Vocabulary.h"
#include "support/Filled.h"
#include "support/Utf8.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <set>
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
            state_ = (state_ ^ static_cast<unsigned char>(c)) * 1099511628211U;
    }
    /// Below `bound`, which is at least 1.
    std::size_t below(std::size_t bound) {
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
        return static_cast<std::size_t>((z ^ (z >> 31U)) % bound);
    }

  private:
    std::uint64_t state_ = 14695981039346656037U;
};

struct Target {
    std::size_t sentence = 0;
    std::string key;
};

class QuizMaker {
  public:
    explicit QuizMaker(const QuizRequest& request)
        : request_(request),
          index_(readDocument(request.text)),
          vocabulary_(index_),
          numbers_(request.text) {}

    Quiz make() {
        std::set<std::string> distinct;
        for (const VocabularyWord& word : vocabulary_.words()) {
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
    [[nodiscard]] std::vector<std::string> targetsIn(std::size_t sentence, bool anyWord) const;
    [[nodiscard]] std::vector<Target> chooseTargets() const;
    [[nodiscard]] std::vector<std::string> wrongAnswers(const Target& target);
    [[nodiscard]] QuizQuestion question(const Target& target, std::size_t number);
    [[nodiscard]] std::string primer(const std::vector<Target>& targets) const;

    const QuizRequest& request_;
    TextIndex index_;
    Vocabulary vocabulary_;
    SeededNumbers numbers_;
};

/// Sentences in the order in which they are asked about: the focus first, then what matters most.
std::vector<std::size_t> QuizMaker::sentenceOrder() const {
    std::vector<std::size_t> order = index_.matching(request_.focus, kMostQuestions);
    std::unordered_set<std::size_t> seen(order.begin(), order.end());
    const auto add = [&](std::size_t sentence) {
        if (seen.insert(sentence).second) order.push_back(sentence);
    };
    for (const std::size_t sentence : index_.keySentences(kMostQuestions * 2))
        add(sentence);
    const std::size_t most = std::min(index_.sentences().size(), kSentencesLookedAt);
    for (std::size_t i = 0; i < most; ++i)
        add(i);
    // A gap with hardly a word around it can only be guessed; such sentences come last.
    std::vector<std::size_t> full;
    std::vector<std::size_t> thin;
    for (const std::size_t sentence : order) {
        const bool isThin = index_.wordsIn(sentence).size() < kFewestWordsAround;
        (isThin ? thin : full).push_back(sentence);
    }
    full.insert(full.end(), thin.begin(), thin.end());
    return full;
}

/// The keys worth asking for in a sentence, best first; with `anyWord` all others behind them.
std::vector<std::string> QuizMaker::targetsIn(std::size_t sentence, bool anyWord) const {
    std::vector<const Word*> words;
    for (const Word& word : index_.wordsIn(sentence)) {
        if (word.isContent || anyWord) words.push_back(&word);
    }
    std::ranges::sort(words, [&](const Word* a, const Word* b) {
        return std::pair(-index_.weight(*a), a->offset) < std::pair(-index_.weight(*b), b->offset);
    });
    std::vector<std::string> keys;
    for (const Word* word : words)
        keys.push_back(word->key);
    return keys;
}

std::vector<Target> QuizMaker::chooseTargets() const {
    const std::vector<std::size_t> order = sentenceOrder();
    const std::size_t wanted =
        std::clamp(index_.sentences().size() / 2, kFewestQuestions + 1, kMostQuestions);
    std::vector<Target> targets;
    std::unordered_set<std::string> used;
    const auto takeFrom = [&](std::size_t sentence, bool anyWord, std::size_t enough) {
        for (const std::string& key : targetsIn(sentence, anyWord)) {
            if (targets.size() >= enough) return;
            if (!used.insert(key).second) continue;
            targets.push_back({sentence, key});
            return;
        }
    };
    for (const std::size_t sentence : order)
        takeFrom(sentence, false, wanted);
    // A thin text: several gaps in one sentence, and at last any word at all.
    for (const bool anyWord : {false, true}) {
        for (std::size_t round = 0; round < kFewestQuestions; ++round) {
            for (const std::size_t sentence : order)
                takeFrom(sentence, anyWord, kFewestQuestions);
        }
    }
    if (targets.size() < kFewestQuestions) {
        throw EngineError(422, "The text is too short for a quiz. Add more of it.");
    }
    return targets;
}

/// Three words of the text that could stand in the gap by their look, but do not.
std::vector<std::string> QuizMaker::wrongAnswers(const Target& target) {
    const VocabularyWord& right = vocabulary_.word(target.key);
    std::unordered_set<std::string_view> inSentence;
    for (const Word& word : index_.wordsIn(target.sentence))
        inSentence.insert(word.key);
    const auto startsUpper = [](const VocabularyWord& word) {
        return isUpperCase(decodeAt(word.surface, 0).value);
    };
    const auto likeness = [&](const VocabularyWord& word) {
        const double lengths = std::abs(static_cast<double>(word.surface.size()) -
                                        static_cast<double>(right.surface.size()));
        return (word.isNumber == right.isNumber ? 4.0 : 0.0) +
               (word.isContent == right.isContent ? 4.0 : 0.0) +
               (startsUpper(word) == startsUpper(right) ? 2.0 : 0.0) + 0.3 * word.weight -
               0.15 * lengths - (inSentence.contains(word.key) ? 6.0 : 0.0);
    };
    std::vector<std::pair<double, const VocabularyWord*>> candidates;
    std::set<std::string> seen{lowered(right.surface)};
    for (const VocabularyWord& word : vocabulary_.words()) {
        if (candidates.size() >= kWordsLookedAt) break;
        if (seen.insert(lowered(word.surface)).second)
            candidates.emplace_back(likeness(word), &word);
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
        const std::size_t pick = numbers_.below(pool--);
        wrong.push_back(candidates[pick].second->surface);
        candidates.erase(candidates.begin() + static_cast<std::ptrdiff_t>(pick));
    }
    return wrong;
}

QuizQuestion QuizMaker::question(const Target& target, std::size_t number) {
    QuizQuestion question;
    question.prompt = "Which word belongs in the gap?\n\n" +
                      clipped(withGap(index_, target.sentence, target.key), kLongestPrompt);
    question.options = wrongAnswers(target);
    // Every place in turn, beginning at one that depends on the text.
    question.answerIndex = (number + request_.text.size()) % kOptions;
    question.options.insert(question.options.begin() +
                                static_cast<std::ptrdiff_t>(question.answerIndex),
                            answerFor(index_, vocabulary_, target.sentence, target.key));
    question.explanation = filled(
        "The text says: “{}”", clipped(index_.sentences()[target.sentence].text, kLongestPrompt));
    return question;
}

std::string QuizMaker::primer(const std::vector<Target>& targets) const {
    std::string text = filled("{} questions on your text. Each leaves a word out of one of "
                              "its sentences; choose the word "
                              "that belongs there.",
                              targets.size());
    const auto gives = [&](std::size_t sentence) {
        return std::ranges::any_of(targets, [&](const Target& target) {
            return target.sentence == sentence ||
                   std::ranges::count(index_.wordsIn(sentence), target.key, &Word::key) > 0;
        });
    };
    for (const std::size_t sentence : index_.keySentences(kMostQuestions)) {
        const bool isThin = index_.wordsIn(sentence).size() < kFewestWordsAround;
        if (isThin || gives(sentence)) continue;
        return text +
               " To begin with: " + clipped(index_.sentences()[sentence].text, kLongestPrompt);
    }
    return text;
}

} // namespace

Quiz makeQuiz(const QuizRequest& request) {
    return QuizMaker(request).make();
}

} // namespace vorq::gateway
