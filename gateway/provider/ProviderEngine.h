#pragma once

#include "engine/Engine.h"
#include "provider/ProviderConfig.h"

namespace vorq::gateway {

/// Passes requests on to an OpenAI-compatible provider and its reply back as it comes.
class ProviderEngine final : public Engine {
  public:
    explicit ProviderEngine(ProviderConfig config);

    [[nodiscard]] std::unique_ptr<ReplyStream> prompt(const PromptRequest& request,
                                                      const Cancelled& cancelled) override;
    [[nodiscard]] std::unique_ptr<ReplyStream> analyze(const AnalyzeRequest& request,
                                                       const Cancelled& cancelled) override;
    [[nodiscard]] std::vector<Flashcard> flashcards(const FlashcardsRequest& request,
                                                    const Cancelled& cancelled) override;
    [[nodiscard]] Quiz quiz(const QuizRequest& request, const Cancelled& cancelled) override;

  private:
    ProviderConfig config_;
};

} // namespace vorq::gateway
