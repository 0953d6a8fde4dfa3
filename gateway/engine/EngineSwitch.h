#pragma once

#include "engine/Engine.h"

#include <memory>
#include <mutex>

namespace vorq::gateway {

/// An engine that can be exchanged while it is in use. Replies on their way end with the engine
/// that began them, which lives as long as they do. Thread-safe.
class EngineSwitch final : public Engine {
  public:
    explicit EngineSwitch(std::shared_ptr<Engine> engine) : m_engine(std::move(engine)) {}

    void use(std::shared_ptr<Engine> engine);

    [[nodiscard]] bool computes() const override { return current()->computes(); }
    [[nodiscard]] std::unique_ptr<ReplyStream> prompt(const PromptRequest& request) override;
    [[nodiscard]] std::unique_ptr<ReplyStream> analyze(const AnalyzeRequest& request) override;
    [[nodiscard]] std::unique_ptr<ReplyStream>
    flashcards(const FlashcardsRequest& request) override;
    [[nodiscard]] std::unique_ptr<ReplyStream> quiz(const QuizRequest& request) override;
    [[nodiscard]] std::unique_ptr<ReplyStream> models() override;

  private:
    [[nodiscard]] std::shared_ptr<Engine> current() const;

    mutable std::mutex m_mutex;
    std::shared_ptr<Engine> m_engine;
};

} // namespace vorq::gateway
