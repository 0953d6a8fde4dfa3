#pragma once

#include "engine/Engine.h"

#include <utility>

namespace vorq::gateway {

/// A reply that is there at once, with nothing to show on its way.
class ReadyReply final : public ReplyStream {
  public:
    explicit ReadyReply(FinishedReply reply) : m_reply(std::move(reply)) {}
    [[nodiscard]] ReplyStep step(SteadyTime) override { return {}; }
    [[nodiscard]] FinishedReply result() override { return std::move(m_reply); }

  private:
    FinishedReply m_reply;
};

} // namespace vorq::gateway
