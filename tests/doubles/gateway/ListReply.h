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
    ListReply(std::vector<std::string> texts, End end) : texts_(std::move(texts)), end_(end) {}

    ReplyStep step(SteadyTime) override {
        if (at_ < texts_.size()) return {.kind = ReplyStep::Kind::Grew, .text = texts_[at_++]};
        if (end_ == End::Engine) throw EngineError(502, "The provider broke off.");
        if (end_ == End::Other) throw std::runtime_error("inner detail");
        if (end_ == End::Never) return {.kind = ReplyStep::Kind::Waits};
        return {};
    }
    FinishedReply result() override {
        Analysis analysis;
        if (!texts_.empty()) analysis.summary = texts_.back();
        return analysis;
    }
    /// What was told to wait ends like this from now on.
    void endAs(End end) { end_ = end; }

  private:
    std::vector<std::string> texts_;
    End end_;
    std::size_t at_ = 0;
};

} // namespace vorq::gateway::testing
