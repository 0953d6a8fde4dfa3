#include "provider/ProviderEngine.h"

#include "provider/ChatRequest.h"
#include "provider/ModelJson.h"
#include "provider/ProviderStream.h"
#include "support/Filled.h"

#include <nlohmann/json.hpp>
#include <string>
#include <utility>

namespace vorq::gateway {
namespace {

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

} // namespace

ProviderEngine::ProviderEngine(ProviderConfig config) : m_config(std::move(config)) {}

std::unique_ptr<ReplyStream> ProviderEngine::prompt(const PromptRequest& request) {
    return std::make_unique<ProviderStream>(
        m_loop, m_config, promptBody(request, providerModel(m_config, request.model)),
        analysisParser(request.whole));
}

std::unique_ptr<ReplyStream> ProviderEngine::analyze(const AnalyzeRequest& request) {
    return std::make_unique<ProviderStream>(
        m_loop, m_config, analyzeBody(request, providerModel(m_config, request.model)),
        analysisParser(request.whole));
}

std::unique_ptr<ReplyStream> ProviderEngine::flashcards(const FlashcardsRequest& request) {
    return std::make_unique<ProviderStream>(
        m_loop, m_config, flashcardsBody(request.text, providerModel(m_config, request.model)),
        flashcardsIn);
}

std::unique_ptr<ReplyStream> ProviderEngine::quiz(const QuizRequest& request) {
    return std::make_unique<ProviderStream>(
        m_loop, m_config, quizBody(request, providerModel(m_config, request.model)), quizIn);
}

} // namespace vorq::gateway
