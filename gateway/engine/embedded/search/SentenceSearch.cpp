#include "engine/embedded/search/SentenceSearch.h"

#include "engine/embedded/search/AnswerFit.h"
#include "engine/embedded/search/CarriedHits.h"
#include "engine/embedded/search/QueryTerms.h"
#include "support/Utf8.h"

#include <algorithm>
#include <string>

namespace vorq::gateway {
namespace {

constexpr std::size_t kLookedAtClosely = 300; // sentences, the best by their words
constexpr double kQuestionShare = 0.2;        // of the score of a question that stays with it
constexpr double kBehindQuestion = 1.0;       // of its score for the sentence right behind it
constexpr double kFartherBehind = 0.3;        // and for the others of the answer
constexpr double kOtherKind = 0.4;            // of its score if it asks for something else

class Search {
  public:
    Search(const TextIndex& index, const SearchQuery& query)
        : index_(index), query_(query), terms_(index, query.subject) {}

    std::vector<std::size_t> best(std::size_t count) {
        if (terms_.empty()) return {};
        scoreWords();
        addAnswers();
        std::vector<std::size_t> candidates = rankedBest(scores_, kLookedAtClosely);
        std::vector<double> closer(candidates.size());
        for (std::size_t i = 0; i < candidates.size(); ++i) {
            const std::size_t sentence = candidates[i];
            closer[i] = scores_[sentence];
            if (closer[i] > 0) closer[i] *= fit(query_.expected, index_, sentence, terms_);
        }
        std::vector<std::size_t> found;
        const std::vector<std::size_t> order = rankedBest(closer, count);
        for (const std::size_t i : order) {
            const double least = closer[order.front()] * 0.4;
            if (closer[i] <= 0 || closer[i] < least) break;
            found.push_back(candidates[i]);
        }
        return found;
    }

  private:
    /// By the words of each sentence and those that it takes over.
    void scoreWords() {
        const std::vector<Sentence>& sentences = index_.sentences();
        const double average = std::max(1.0, static_cast<double>(index_.wordCount()) /
                                                 static_cast<double>(sentences.size()));
        CarriedHits carried(index_, terms_);
        words_.resize(sentences.size());
        for (std::size_t i = 0; i < sentences.size(); ++i) {
            const CarriedHits::Result found = carried.next(i);
            const double length = static_cast<double>(index_.wordsIn(i).size()) / average;
            words_[i] = terms_.score(found.hits, length) * found.share;
        }
    }

    /// What stands behind a question that fits answers it.
    void addAnswers() {
        const std::vector<Sentence>& sentences = index_.sentences();
        const std::string asked = lowered(trimmed(query_.request));
        scores_ = words_;
        double question = 0;
        bool isRightBehind = false;
        for (std::size_t i = 0; i < sentences.size(); ++i) {
            if (sentences[i].isQuestion) {
                const bool isRequest = lowered(trimmed(index_.text(i))) == asked;
                question = words_[i] * (isRequest ? 2 : 1);
                if (question > 0) question *= matchOfKinds(i);
                isRightBehind = true;
                scores_[i] = isRequest ? 0 : words_[i] * kQuestionShare;
                continue;
            }
            scores_[i] += question * (isRightBehind ? kBehindQuestion : kFartherBehind);
            isRightBehind = false;
            const bool goesOn = i + 1 < sentences.size() && !sentences[i + 1].startsBlock;
            if (!goesOn) question = 0;
        }
    }

    /// Less for a question in the text that asks for something of another kind.
    [[nodiscard]] double matchOfKinds(std::size_t sentence) const {
        const auto isSpecific = [](QuestionKind kind) {
            return kind != QuestionKind::Other && kind != QuestionKind::Definition;
        };
        const QuestionKind wanted = query_.expected.kind;
        const QuestionKind asked = expectationOf(index_.text(sentence), index_.language()).kind;
        return isSpecific(wanted) && isSpecific(asked) && wanted != asked ? kOtherKind : 1;
    }

    const TextIndex& index_;
    const SearchQuery& query_;
    QueryTerms terms_;
    std::vector<double> words_;
    std::vector<double> scores_;
};

} // namespace

std::vector<std::size_t> findSentences(const TextIndex& index, const SearchQuery& query,
                                       std::size_t count) {
    return Search(index, query).best(count);
}

std::vector<std::size_t> findSentences(const TextIndex& index, std::string_view request,
                                       std::size_t count) {
    return findSentences(index,
                         {.subject = request,
                          .expected = expectationOf(request, index.language()),
                          .request = request},
                         count);
}

std::vector<std::size_t> sentencesHolding(const TextIndex& index, QuestionKind kind,
                                          std::size_t count) {
    std::vector<std::size_t> found;
    if (kind != QuestionKind::Time && kind != QuestionKind::Quantity) return found;
    for (std::size_t i = 0; i < index.sentences().size() && found.size() < count; ++i) {
        const bool holds = kind == QuestionKind::Time ? holdsTime(index, i) : holdsNumber(index, i);
        if (holds) found.push_back(i);
    }
    return found;
}

} // namespace vorq::gateway
