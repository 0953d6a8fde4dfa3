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
        : m_index(index), m_query(query), m_terms(index, query.subject) {}

    std::vector<std::size_t> best(std::size_t count) {
        if (m_terms.empty()) return {};
        scoreWords();
        addAnswers();
        std::vector<std::size_t> candidates = rankedBest(m_scores, kLookedAtClosely);
        std::vector<double> closer(candidates.size());
        for (std::size_t i = 0; i < candidates.size(); ++i) {
            const std::size_t sentence = candidates[i];
            closer[i] = m_scores[sentence];
            if (closer[i] > 0) closer[i] *= fit(m_query.expected, m_index, sentence, m_terms);
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
        const std::vector<Sentence>& sentences = m_index.sentences();
        const double average = std::max(1.0, static_cast<double>(m_index.wordCount()) /
                                                 static_cast<double>(sentences.size()));
        CarriedHits carried(m_index, m_terms);
        m_words.resize(sentences.size());
        for (std::size_t i = 0; i < sentences.size(); ++i) {
            const CarriedHits::Result found = carried.next(i);
            const double length = static_cast<double>(m_index.wordsIn(i).size()) / average;
            m_words[i] = m_terms.score(found.hits, length) * found.share;
        }
    }

    /// What stands behind a question that fits answers it.
    void addAnswers() {
        const std::vector<Sentence>& sentences = m_index.sentences();
        const std::string asked = lowered(trimmed(m_query.request));
        m_scores = m_words;
        double question = 0;
        bool isRightBehind = false;
        for (std::size_t i = 0; i < sentences.size(); ++i) {
            if (sentences[i].isQuestion) {
                const bool isRequest = lowered(trimmed(m_index.text(i))) == asked;
                question = m_words[i] * (isRequest ? 2 : 1);
                if (question > 0) question *= matchOfKinds(i);
                isRightBehind = true;
                m_scores[i] = isRequest ? 0 : m_words[i] * kQuestionShare;
                continue;
            }
            m_scores[i] += question * (isRightBehind ? kBehindQuestion : kFartherBehind);
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
        const QuestionKind wanted = m_query.expected.kind;
        const QuestionKind asked = expectationOf(m_index.text(sentence), m_index.language()).kind;
        return isSpecific(wanted) && isSpecific(asked) && wanted != asked ? kOtherKind : 1;
    }

    const TextIndex& m_index;
    const SearchQuery& m_query;
    QueryTerms m_terms;
    std::vector<double> m_words;
    std::vector<double> m_scores;
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
