#pragma once

#include "engine/Engine.h"
#include "engine/embedded/ReplyDraft.h"

#include <chrono>
#include <cstddef>
#include <string>

namespace vorq::gateway {

/// A reply that is ready, shown piece by piece: the first at once, then one each `delay`.
class DraftStream final : public ReplyStream {
  public:
    DraftStream(ReplyDraft draft, std::chrono::milliseconds delay);
    [[nodiscard]] ReplyStep step(SteadyTime now) override;
    [[nodiscard]] FinishedReply result() override;

  private:
    ReplyDraft draft_;
    std::chrono::milliseconds delay_;
    std::size_t shown_ = 0;
    std::string soFar_;
    SteadyTime due_ = SteadyTime::min();
};

} // namespace vorq::gateway
