#include "platform/linux/x11/X11Events.h"

#include "platform/linux/x11/X11Reply.h"

#include <xcb/xcb.h>
#include <xcb/xfixes.h>

namespace vorq {

X11Events::X11Events(Handler handler) : m_handler(std::move(handler)) {
    if (!m_connection.isUsable()) return;
    const int descriptor = xcb_get_file_descriptor(m_connection.get());
    m_notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [this] { take(); });
}

void X11Events::watchRootProperties() {
    m_connection.watchRootProperties();
}

void X11Events::watchSelectionOwner(X11Connection::Atom selection) {
    if (!m_connection.isUsable()) return;
    xcb_connection_t* connection = m_connection.get();
    const auto cookie =
        xcb_xfixes_query_version(connection, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION);
    const X11Reply<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(connection, cookie, nullptr));
    if (!version) return;
    xcb_xfixes_select_selection_input(connection, m_connection.root(), selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    xcb_flush(connection);
}

// The answer to a request comes behind all events before it.
void X11Events::catchUp() {
    if (!m_connection.isUsable()) return;
    xcb_connection_t* connection = m_connection.get();
    const X11Reply<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    take();
}

void X11Events::take() {
    while (xcb_generic_event_t* event = xcb_poll_for_event(m_connection.get())) {
        const X11Reply<xcb_generic_event_t> owned(event);
        m_handler(*owned);
    }
    if (!m_connection.isUsable()) m_notifier->setEnabled(false);
}

} // namespace vorq
