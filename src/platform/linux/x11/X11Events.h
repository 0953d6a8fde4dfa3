#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

#include <xcb/xcb.h>

namespace vorq {

/// A connection that only takes events in, and hands them over from the event loop. Waiting for
/// answers on it would swallow events. Main thread only.
class X11Events {
  public:
    using Handler = std::function<void(const xcb_generic_event_t&)>;

    explicit X11Events(Handler handler);

    /// To select events with; requests that are answered belong elsewhere.
    [[nodiscard]] const X11Connection& connection() const { return m_connection; }

    /// Asks for the changes of the root window's properties. From then on none is missed by who
    /// reads them afterwards.
    void watchRootProperties();

    /// Asks for an event whenever the owner of the selection changes, or goes.
    void watchSelectionOwner(X11Connection::Atom selection);

    /// Hands over all events that the server has sent up to now, before it returns.
    void catchUp();

  private:
    void take();

    X11Connection m_connection;
    Handler m_handler;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace vorq
