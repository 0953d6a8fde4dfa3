#include "engine/embedded/EmbeddedEngine.h"

#include "engine/embedded/FlashcardMaker.h"
#include "engine/embedded/QuizMaker.h"
#include "engine/embedded/ReplyDraft.h"

#include <utility>

namespace vorq::gateway {
namespace {

class DraftStream final : public ReplyStream {
  public:
    DraftStream(ReplyDraft draft, Pacer& pacer, std::chrono::milliseconds delay)
        : draft_(std::move(draft)), pacer_(pacer), delay_(delay) {}

    std::optional<std::string> next(const Cancelled& cancelled) override {
        if (cancelled()) throw CancelledError();
        if (sent_ == draft_.pieces.size()) return std::nullopt;
        if (sent_ > 0 && !pacer_.pause(delay_, cancelled)) throw CancelledError();
        soFar_ += draft_.pieces[sent_++];
        return soFar_;
    }

    Analysis result() override {
        return {.summary = draft_.text(),
                .feedback = {},
                .corrections = {},
                .sources = {},
                .followUp = draft_.followUp};
    }

  private:
    ReplyDraft draft_;
    Pacer& pacer_;
    std::chrono::milliseconds delay_;
    std::size_t sent_ = 0;
    std::string soFar_;
};

} // namespace

EmbeddedEngine::EmbeddedEngine(Pacer& pacer, std::chrono::milliseconds stepDelay)
    : pacer_(pacer), stepDelay_(stepDelay) {}

std::unique_ptr<ReplyStream> EmbeddedEngine::prompt(const PromptRequest& request,
                                                    const Cancelled&) {
    const auto delay = request.whole ? std::chrono::milliseconds(0) : stepDelay_;
    return std::make_unique<DraftStream>(draftReply(request), pacer_, delay);
}

std::unique_ptr<ReplyStream> EmbeddedEngine::analyze(const AnalyzeRequest& request,
                                                     const Cancelled&) {
    const auto delay = request.whole ? std::chrono::milliseconds(0) : stepDelay_;
    return std::make_unique<DraftStream>(draftAnalysis(request.text), pacer_, delay);
}

std::vector<Flashcard> EmbeddedEngine::flashcards(const FlashcardsRequest& request,
                                                  const Cancelled&) {
    return makeFlashcards(request.text);
}

Quiz EmbeddedEngine::quiz(const QuizRequest& request, const Cancelled&) {
    return makeQuiz(request);
}

} // namespace vorq::gateway
