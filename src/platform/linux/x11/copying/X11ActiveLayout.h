#pragma once

#include "platform/linux/x11/X11Keyboard.h"

#include <memory>
#include <optional>

struct xcb_connection_t;
struct xkb_state;

namespace vorq {

/// The layout that is active now, of those that the user switches between. An object shows it as it
/// was when made.
class X11ActiveLayout {
  public:
    using KeyCode = X11Keyboard::KeyCode;

    explicit X11ActiveLayout(xcb_connection_t* connection);

    /// The key that types an upper-case Latin letter in it; nothing where it has no such letter, or
    /// is not known.
    [[nodiscard]] std::optional<KeyCode> keyOf(char letter) const;

  private:
    struct Release {
        void operator()(xkb_state* state) const;
    };

    std::unique_ptr<xkb_state, Release> m_state; // null where it is not known
};

} // namespace vorq
