#include "provider/ProviderEngine.h"

#include "provider/ChatRequest.h"
#include "provider/ModelJson.h"
#include "provider/ProviderStream.h"

#include <nlohmann/json.hpp>
#include <string>
#include <utility>

namespace vorq::gateway {
namespace {

/// How to read an analysis: whole, into its fields, or as the plain text that was streamed.
ReplyParser analysisParser(bool whole) {
    if (whole) return [](std::string_view text) { return readWholeReply(text); };
    return [](std::string_view text) {
        Analysis analysis;
        analysis.summary = text;
        return analysis;
    };
}

FinishedReply flashcardsIn(std::string_view text) {
    std::vector<Flashcard> cards = readFlashcards(text);
    if (cards.empty()) {
        throw EngineError(502, "The model's flashcards could not be read. Try again.");
    }
    return cards;
}

FinishedReply quizIn(std::string_view text) {
    Quiz quiz = readQuiz(text);
    if (quiz.questions.empty()) {
        throw EngineError(502, "The model's quiz could not be read. Try again.");
    }
    return quiz;
}

} // namespace

ProviderEngine::ProviderEngine(ProviderConfig config) : config_(std::move(config)) {}

std::unique_ptr<ReplyStream> ProviderEngine::prompt(const PromptRequest& request,
                                                    const Cancelled&) {
    return std::make_unique<ProviderStream>(
        loop_, config_, promptBody(request, providerModel(config_, request.model)),
        analysisParser(request.whole));
}

std::unique_ptr<ReplyStream> ProviderEngine::analyze(const AnalyzeRequest& request,
                                                     const Cancelled&) {
    return std::make_unique<ProviderStream>(
        loop_, config_, analyzeBody(request, providerModel(config_, request.model)),
        analysisParser(request.whole));
}

std::unique_ptr<ReplyStream> ProviderEngine::flashcards(const FlashcardsRequest& request,
                                                        const Cancelled&) {
    return std::make_unique<ProviderStream>(
        loop_, config_, flashcardsBody(request.text, providerModel(config_, request.model)),
        flashcardsIn);
}

std::unique_ptr<ReplyStream> ProviderEngine::quiz(const QuizRequest& request, const Cancelled&) {
    return std::make_unique<ProviderStream>(
        loop_, config_, quizBody(request, providerModel(config_, request.model)), quizIn);
}

} // namespace vorq::gateway
