#pragma once

#include "engine/Engine.h"
#include "provider/ModelOffer.h"
#include "provider/ProviderConfig.h"
#include "provider/ProviderStream.h"
#include "provider/TransferLoop.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

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
    [[nodiscard]] std::unique_ptr<ReplyStream> models() override;

  private:
    [[nodiscard]] std::unique_ptr<ReplyStream> ask(nlohmann::json body, const std::string& wanted,
                                                   ReplyParser parser);
    [[nodiscard]] std::string modelFor(const std::string& wanted) const;
    [[nodiscard]] bool mustAskForModels(const std::string& wanted) const;

    ProviderConfig m_config;
    TransferLoop m_loop;
    ModelOffer m_offer{m_loop, m_config};
};

} // namespace vorq::gateway
