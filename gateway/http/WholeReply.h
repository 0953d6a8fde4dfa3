#pragma once

#include "http/ReplyFeed.h"

namespace vorq::gateway {

/// A reply as one JSON document at its end. Blanks in front of it fill the time; once one has gone
/// out, a failure can have no status of its own and is a document too.
class WholeReply final : public ReplyFeed {
  public:
    using ReplyFeed::ReplyFeed;
    [[nodiscard]] const char* contentType() const override { return "application/json"; }
    [[nodiscard]] bool beginsAtOnce() const override { return false; }
    [[nodiscard]] FeedStep next(SteadyTime now) override;
    [[nodiscard]] std::string stopped() const override;

  private:
    [[nodiscard]] FeedStep step(SteadyTime now);

    SteadyTime m_lastSent = SteadyTime::min();
    bool m_hasBegun = false;
};

} // namespace vorq::gateway
