#pragma once

#include "engine/Engine.h"

#include <utility>

namespace vorq::gateway {

/// A reply that is there at once, with nothing to show on its way.
class ReadyReply final : public ReplyStream {
  public:
    explicit ReadyReply(FinishedReply reply) : reply_(std::move(reply)) {}
    [[nodiscard]] ReplyStep step(SteadyTime) override { return {}; }
    [[nodiscard]] FinishedReply result() override { return std::move(reply_); }

  private:
    FinishedReply reply_;
};

} // namespace vorq::gateway
