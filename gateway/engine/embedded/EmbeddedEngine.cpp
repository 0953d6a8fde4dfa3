#include "engine/embedded/EmbeddedEngine.h"

#include "engine/ReadyReply.h"
#include "engine/embedded/DraftStream.h"
#include "engine/embedded/FlashcardMaker.h"
#include "engine/embedded/QuizMaker.h"
#include "engine/embedded/ReplyDraft.h"

namespace vorq::gateway {

EmbeddedEngine::EmbeddedEngine(std::chrono::milliseconds stepDelay) : m_stepDelay(stepDelay) {}

std::unique_ptr<ReplyStream> EmbeddedEngine::prompt(const PromptRequest& request) {
    const auto delay = request.whole ? std::chrono::milliseconds(0) : m_stepDelay;
    return std::make_unique<DraftStream>(draftReply(request), delay);
}

std::unique_ptr<ReplyStream> EmbeddedEngine::analyze(const AnalyzeRequest& request) {
    const auto delay = request.whole ? std::chrono::milliseconds(0) : m_stepDelay;
    return std::make_unique<DraftStream>(draftAnalysis(request.text), delay);
}

std::unique_ptr<ReplyStream> EmbeddedEngine::flashcards(const FlashcardsRequest& request) {
    return std::make_unique<ReadyReply>(makeFlashcards(request.text));
}

std::unique_ptr<ReplyStream> EmbeddedEngine::quiz(const QuizRequest& request) {
    return std::make_unique<ReadyReply>(makeQuiz(request));
}

} // namespace vorq::gateway
