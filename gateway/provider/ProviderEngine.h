#pragma once

#include "engine/Engine.h"
#include "provider/ProviderConfig.h"
#include "provider/TransferLoop.h"

namespace vorq::gateway {

/// Passes requests on to an OpenAI-compatible provider and its reply back as it comes. Outlives
/// its replies.
class ProviderEngine final : public Engine {
  public:
    explicit ProviderEngine(ProviderConfig config);

    [[nodiscard]] bool computes() const override { return false; }
    [[nodiscard]] std::unique_ptr<ReplyStream> prompt(const PromptRequest& request) override;
    [[nodiscard]] std::unique_ptr<ReplyStream> analyze(const AnalyzeRequest& request) override;
    [[nodiscard]] std::unique_ptr<ReplyStream>
    flashcards(const FlashcardsRequest& request) override;
    [[nodiscard]] std::unique_ptr<ReplyStream> quiz(const QuizRequest& request) override;

  private:
    ProviderConfig m_config;
    TransferLoop m_loop;
};

} // namespace vorq::gateway
