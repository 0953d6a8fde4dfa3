#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <QRect>

#include <cstdint>
#include <optional>

namespace vorq {

/// Where windows are on the screen, in pixels from its top left. One thread at a time.
class X11WindowPlace {
  public:
    /// The contents of a process's window: the active one if it is of that process, else its
    /// uppermost. Nothing if it has none.
    [[nodiscard]] std::optional<QRect> contentsOf(std::int32_t process) const;

  private:
    [[nodiscard]] std::optional<X11Connection::Window> windowOf(std::int32_t process) const;

    X11Connection m_x11;
};

} // namespace vorq
