#pragma once

#include "platform/Clock.h"
#include "shell/status/StatusItem.h"

#include <functional>
#include <optional>

namespace vorq {

/// Shows an image in place of the status glyph, and the glyph again after a while. Main thread
/// only.
class StatusFlash {
  public:
    static constexpr Clock::Duration duration = std::chrono::milliseconds(2200);

    /// The clock and whatever `show` needs must outlive this object.
    StatusFlash(Clock& clock, std::function<void(StatusImage)> show);
    StatusFlash(const StatusFlash&) = delete;
    StatusFlash& operator=(const StatusFlash&) = delete;
    ~StatusFlash();

    /// A flash within another takes its place and lasts its own full time.
    void flash(StatusImage image);

  private:
    void cancelRestore();

    Clock& m_clock;
    std::function<void(StatusImage)> m_show;
    std::optional<Clock::TimerId> m_restore;
};

} // namespace vorq
