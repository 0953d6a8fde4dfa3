#include "provider/ProviderEngine.h"

#include "provider/ChatRequest.h"
#include "provider/ModelJson.h"
#include "support/Filled.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <functional>
#include <string>
#include <utility>

namespace vorq::gateway {
namespace {

using nlohmann::json;
using Steady = std::chrono::steady_clock;

constexpr auto kCutShort = "*The reply ends here: the model reached its length limit. Ask it to go "
                           "on.*";
constexpr auto kBrokenOff = "*The reply ends here: the model broke off. Ask it to go on.*";

/// Says below a reply why it ends early. Parts that programs read are left as they are.
void addNote(Analysis& analysis, const char* note) {
    if (analysis.feedback.starts_with('[')) return;
    if (!analysis.feedback.empty()) analysis.feedback += "\n\n";
    analysis.feedback += note;
}

FinishedReply wholeAnalysisIn(std::string_view text, bool isCutShort) {
    ParsedReply reply = readWholeReply(text);
    if (isCutShort || reply.breaksOff) {
        addNote(reply.analysis, isCutShort ? kCutShort : kBrokenOff);
    }
    return std::move(reply.analysis);
}

FinishedReply streamedAnalysisIn(std::string_view text, bool isCutShort) {
    Analysis analysis;
    analysis.summary = text;
    if (isCutShort) addNote(analysis, kCutShort);
    return analysis;
}

/// How to read an analysis: whole, into its fields, or as the plain text that was streamed.
ReplyParser analysisParser(bool whole) {
    return whole ? wholeAnalysisIn : streamedAnalysisIn;
}

/// The model has written nothing that can be used of what it was to make.
EngineError studyFailure(const char* made, bool isCutShort) {
    if (!isCutShort) return {502, filled("The model's {} could not be read. Try again.", made)};
    return {502, filled("The model reached its length limit before its {} could be used. Try it "
                        "with less text, or with another model.",
                        made)};
}

FinishedReply flashcardsIn(std::string_view text, bool isCutShort) {
    std::vector<Flashcard> cards = readFlashcards(text);
    if (cards.empty()) throw studyFailure("flashcards", isCutShort);
    return cards;
}

FinishedReply quizIn(std::string_view text, bool isCutShort) {
    Quiz quiz = readQuiz(text);
    if (quiz.questions.empty()) throw studyFailure("quiz", isCutShort);
    return quiz;
}

/// A reply that is asked for once the provider has told its models, or has failed to.
class ReplyAfterList final : public ReplyStream {
  public:
    using Begin = std::move_only_function<std::unique_ptr<ReplyStream>()>;

    ReplyAfterList(std::unique_ptr<ReplyStream> list, Begin begin)
        : m_list(std::move(list)), m_begin(std::move(begin)) {}

    void setCaller(const std::function<void()>& call) override {
        m_call = call;
        m_list->setCaller(call);
    }

    [[nodiscard]] ReplyStep step(SteadyTime now) override {
        if (!m_reply) {
            const ReplyStep waits = stepList(now);
            if (waits.kind == ReplyStep::Kind::Waits) return waits;
            m_list.reset();
            m_reply = m_begin();
            m_reply->setCaller(m_call);
        }
        return m_reply->step(now);
    }

    [[nodiscard]] FinishedReply result() override { return m_reply->result(); }

  private:
    [[nodiscard]] ReplyStep stepList(SteadyTime now) {
        try {
            return m_list->step(now);
        } catch (const EngineError&) {
            return {}; // the reply will tell, if it fails as well
        }
    }

    std::unique_ptr<ReplyStream> m_list;
    Begin m_begin;
    std::function<void()> m_call;
    std::unique_ptr<ReplyStream> m_reply;
};

} // namespace

ProviderEngine::ProviderEngine(ProviderConfig config) : m_config(std::move(config)) {}

std::unique_ptr<ReplyStream> ProviderEngine::prompt(const PromptRequest& request) {
    return ask(promptBody(request, modelFor(request.model)), request.model,
               analysisParser(request.whole));
}

std::unique_ptr<ReplyStream> ProviderEngine::analyze(const AnalyzeRequest& request) {
    return ask(analyzeBody(request, modelFor(request.model)), request.model,
               analysisParser(request.whole));
}

std::unique_ptr<ReplyStream> ProviderEngine::flashcards(const FlashcardsRequest& request) {
    return ask(flashcardsBody(request.text, modelFor(request.model)), request.model, flashcardsIn);
}

std::unique_ptr<ReplyStream> ProviderEngine::quiz(const QuizRequest& request) {
    return ask(quizBody(request, modelFor(request.model)), request.model, quizIn);
}

std::unique_ptr<ReplyStream> ProviderEngine::models() {
    if (!m_config.offersModels) return Engine::models();
    return m_offer.list(Steady::now());
}

std::string ProviderEngine::modelFor(const std::string& wanted) const {
    const bool isOffered = !m_config.models.contains(wanted) && m_offer.holds(wanted);
    return isOffered ? wanted : providerModel(m_config, wanted);
}

/// Whether only the provider's list tells if it has the model.
bool ProviderEngine::mustAskForModels(const std::string& wanted) const {
    return m_config.offersModels && !wanted.empty() && !m_config.model.empty() &&
           !m_config.models.contains(wanted) && !m_offer.holds(wanted) &&
           !m_offer.isFresh(Steady::now());
}

std::unique_ptr<ReplyStream> ProviderEngine::ask(json body, const std::string& wanted,
                                                 ReplyParser parser) {
    if (!mustAskForModels(wanted))
        return std::make_unique<ProviderStream>(m_loop, m_config, body, std::move(parser));
    auto begin = [this, body = std::move(body), wanted, parser = std::move(parser)]() mutable {
        body["model"] = modelFor(wanted);
        return std::make_unique<ProviderStream>(m_loop, m_config, body, std::move(parser));
    };
    return std::make_unique<ReplyAfterList>(m_offer.list(Steady::now()), std::move(begin));
}

} // namespace vorq::gateway
