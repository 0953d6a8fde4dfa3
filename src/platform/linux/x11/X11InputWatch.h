#pragma once

#include "platform/linux/x11/X11Events.h"

namespace vorq {

/// Whether the user has pressed a key or a mouse button since this was made, in whatever program.
/// Listens until the first press only. Main thread only.
class X11InputWatch {
  public:
    X11InputWatch();

    /// False where it cannot be known.
    [[nodiscard]] bool wasUsed();

  private:
    X11Events m_events;
    /// Of the input extension; 0 where it is absent.
    std::uint8_t m_opcode = 0;
    bool m_wasUsed = false;
};

} // namespace vorq
