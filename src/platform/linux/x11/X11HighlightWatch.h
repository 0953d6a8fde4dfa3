#pragma once

#include "platform/ProcessId.h"
#include "platform/linux/x11/HighlightTrace.h"
#include "platform/linux/x11/X11Events.h"

#include <cstdint>
#include <mutex>
#include <optional>

namespace vorq {

/// Follows the session for a HighlightTrace: which window is in front, who claims the PRIMARY
/// selection, and the left button. Nothing of what is highlighted, typed or shown is read. Without
/// an X server, or without its extensions, nothing is known.
///
/// Made and destroyed on the main thread, whose event loop takes the events in; asked by any
/// thread.
class X11HighlightWatch {
  public:
    X11HighlightWatch();

    [[nodiscard]] bool isElsewhere(ProcessId process) const;
    [[nodiscard]] bool isClickedAway(ProcessId process) const;

  private:
    using Window = X11Connection::Window;

    void selectClaims();
    void selectButtons();
    void take(const xcb_generic_event_t& event);
    void takeButton(const xcb_generic_event_t& event);
    void noteFront();
    void noteClaim(Window owner);
    [[nodiscard]] QPoint pointer() const;
    [[nodiscard]] std::optional<QRect> contentsOf(Window window) const;

    // Waiting for an answer would swallow events on the same connection.
    X11Connection m_requests;
    X11Events m_events;
    X11Connection::Atom m_activeWindowAtom = 0;
    // Of the extensions; 0 for one that is absent.
    std::uint8_t m_claimEvent = 0;
    std::uint8_t m_inputOpcode = 0;
    Window m_front = 0;

    mutable std::mutex m_mutex;
    HighlightTrace m_trace;
};

} // namespace vorq
