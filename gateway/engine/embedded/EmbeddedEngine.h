#pragma once

#include "engine/Engine.h"

#include <chrono>

namespace vorq::gateway {

/// Answers without any model, from the words of the text alone, and says so. The same request
/// always gets the same reply.
class EmbeddedEngine final : public Engine {
  public:
    /// `stepDelay` stands between two steps of a stream.
    explicit EmbeddedEngine(std::chrono::milliseconds stepDelay);

    [[nodiscard]] std::unique_ptr<ReplyStream> prompt(const PromptRequest& request) override;
    [[nodiscard]] std::unique_ptr<ReplyStream> analyze(const AnalyzeRequest& request) override;
    [[nodiscard]] std::unique_ptr<ReplyStream>
    flashcards(const FlashcardsRequest& request) override;
    [[nodiscard]] std::unique_ptr<ReplyStream> quiz(const QuizRequest& request) override;

  private:
    std::chrono::milliseconds m_stepDelay;
};

} // namespace vorq::gateway
