#pragma once

#include "engine/Engine.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace vorq::gateway::testing {

/// A reply that gives its texts at once and then ends, fails or waits, as told.
class ListReply final : public ReplyStream {
  public:
    enum class End { Done, Engine, Other, Never };
    ListReply(std::vector<std::string> texts, End end) : m_texts(std::move(texts)), m_end(end) {}

    ReplyStep step(SteadyTime) override {
        if (m_at < m_texts.size()) return {.kind = ReplyStep::Kind::Grew, .text = m_texts[m_at++]};
        if (m_end == End::Engine) throw EngineError(502, "The provider broke off.");
        if (m_end == End::Other) throw std::runtime_error("inner detail");
        if (m_end == End::Never) return {.kind = ReplyStep::Kind::Waits};
        return {};
    }
    FinishedReply result() override {
        Analysis analysis;
        if (!m_texts.empty()) analysis.summary = m_texts.back();
        return analysis;
    }
    /// What was told to wait ends like this from now on.
    void endAs(End end) { m_end = end; }

  private:
    std::vector<std::string> m_texts;
    End m_end;
    std::size_t m_at = 0;
};

} // namespace vorq::gateway::testing
