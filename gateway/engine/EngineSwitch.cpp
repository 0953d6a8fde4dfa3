#include "engine/EngineSwitch.h"

#include <utility>

namespace vorq::gateway {
namespace {

/// Keeps the engine of a reply for as long as the reply.
class KeptReply final : public ReplyStream {
  public:
    KeptReply(std::shared_ptr<Engine> engine, std::unique_ptr<ReplyStream> reply)
        : m_engine(std::move(engine)), m_reply(std::move(reply)) {}

    void setCaller(const std::function<void()>& call) override { m_reply->setCaller(call); }
    [[nodiscard]] ReplyStep step(SteadyTime now) override { return m_reply->step(now); }
    [[nodiscard]] FinishedReply result() override { return m_reply->result(); }

  private:
    std::shared_ptr<Engine> m_engine;
    std::unique_ptr<ReplyStream> m_reply; // goes before its engine
};

template<typename Ask>
std::unique_ptr<ReplyStream> keptReply(std::shared_ptr<Engine> engine, Ask ask) {
    auto reply = ask(*engine);
    return std::make_unique<KeptReply>(std::move(engine), std::move(reply));
}

} // namespace

void EngineSwitch::use(std::shared_ptr<Engine> engine) {
    const std::scoped_lock lock(m_mutex);
    m_engine.swap(engine);
}

std::shared_ptr<Engine> EngineSwitch::current() const {
    const std::scoped_lock lock(m_mutex);
    return m_engine;
}

std::unique_ptr<ReplyStream> EngineSwitch::prompt(const PromptRequest& request) {
    return keptReply(current(), [&](Engine& engine) { return engine.prompt(request); });
}

std::unique_ptr<ReplyStream> EngineSwitch::analyze(const AnalyzeRequest& request) {
    return keptReply(current(), [&](Engine& engine) { return engine.analyze(request); });
}

std::unique_ptr<ReplyStream> EngineSwitch::flashcards(const FlashcardsRequest& request) {
    return keptReply(current(), [&](Engine& engine) { return engine.flashcards(request); });
}

std::unique_ptr<ReplyStream> EngineSwitch::quiz(const QuizRequest& request) {
    return keptReply(current(), [&](Engine& engine) { return engine.quiz(request); });
}

std::unique_ptr<ReplyStream> EngineSwitch::models() {
    return keptReply(current(), [](Engine& engine) { return engine.models(); });
}

} // namespace vorq::gateway
