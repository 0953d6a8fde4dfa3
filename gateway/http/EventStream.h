#pragma once

#include "http/ReplyFeed.h"

#include <string>

namespace vorq::gateway {

/// A reply as server-sent events: each holds the whole of it so far, the last one all its fields,
/// or its failure. Comment lines fill the time.
class EventStream final : public ReplyFeed {
  public:
    using ReplyFeed::ReplyFeed;
    [[nodiscard]] const char* contentType() const override { return "text/event-stream"; }
    [[nodiscard]] bool beginsAtOnce() const override { return true; }
    /// Never throws an EngineError.
    [[nodiscard]] FeedStep next(SteadyTime now) override;
    [[nodiscard]] std::string stopped() const override;

  private:
    [[nodiscard]] FeedStep step(SteadyTime now);

    SteadyTime m_lastSent = SteadyTime::min();
};

} // namespace vorq::gateway
