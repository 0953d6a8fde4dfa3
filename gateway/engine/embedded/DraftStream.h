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
    ReplyDraft m_draft;
    std::chrono::milliseconds m_delay;
    std::size_t m_shown = 0;
    std::string m_soFar;
    SteadyTime m_due = SteadyTime::min();
};

} // namespace vorq::gateway
