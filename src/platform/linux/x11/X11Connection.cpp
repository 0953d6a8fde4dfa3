#include "platform/linux/x11/X11Connection.h"

#include "platform/linux/x11/X11Reply.h"

#include <xcb/res.h>
#include <xcb/xcb.h>

#include <cstring>

namespace vorq {
namespace {

constexpr std::uint32_t longestProperty = 64 * 1024 / 4; // in units of four bytes

xcb_window_t rootOfScreen(xcb_connection_t* connection, int number) {
    xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screen.rem > 0 && number > 0; --number)
        xcb_screen_next(&screen);
    return screen.rem > 0 ? screen.data->root : 0;
}

} // namespace

X11Connection::X11Connection() {
    m_connection = xcb_connect(nullptr, &m_screen);
    if (isUsable()) {
        m_root = rootOfScreen(m_connection, m_screen);
        return;
    }
    xcb_disconnect(m_connection);
    m_connection = nullptr;
}

X11Connection::~X11Connection() {
    if (m_connection != nullptr) xcb_disconnect(m_connection);
}

bool X11Connection::isUsable() const {
    return m_connection != nullptr && xcb_connection_has_error(m_connection) == 0;
}

X11Connection::Atom X11Connection::atom(const QByteArray& name) const {
    if (!isUsable()) return 0;
    const xcb_intern_atom_cookie_t cookie =
        xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.constData());
    const X11Reply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(m_connection, cookie, nullptr));
    return reply ? reply->atom : 0;
}

QByteArray X11Connection::property(Window window, Atom name) const {
    if (!isUsable()) return {};
    const xcb_get_property_cookie_t cookie = xcb_get_property(
        m_connection, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty);
    const X11Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_connection, cookie, nullptr));
    if (!reply || reply->format == 0) return {};
    return QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                      xcb_get_property_value_length(reply.get()));
}

std::vector<std::uint32_t> X11Connection::numbers(Window window, Atom name) const {
    const QByteArray bytes = property(window, name);
    std::vector<std::uint32_t> numbers(static_cast<std::size_t>(bytes.size()) / 4);
    if (!numbers.empty()) std::memcpy(numbers.data(), bytes.constData(), numbers.size() * 4);
    return numbers;
}

// A busy server may get to this connection long after others: unless it is waited for, a change
// that is caused over another one can come first.
void X11Connection::watchRootProperties() const {
    if (!isUsable()) return;
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    const xcb_void_cookie_t cookie =
        xcb_change_window_attributes_checked(m_connection, m_root, XCB_CW_EVENT_MASK, &mask);
    const X11Reply<xcb_generic_error_t> error(xcb_request_check(m_connection, cookie));
}

std::optional<std::int32_t> X11Connection::processOf(Window window) const {
    if (!isUsable() || window == 0) return {};
    const xcb_res_client_id_spec_t spec{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const xcb_res_query_client_ids_cookie_t cookie =
        xcb_res_query_client_ids(m_connection, 1, &spec);
    const X11Reply<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(m_connection, cookie, nullptr));
    if (!reply) return {};
    auto value = xcb_res_query_client_ids_ids_iterator(reply.get());
    for (; value.rem > 0; xcb_res_client_id_value_next(&value)) {
        const bool isProcess =
            (value.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0;
        if (isProcess && xcb_res_client_id_value_value_length(value.data) > 0)
            return static_cast<std::int32_t>(*xcb_res_client_id_value_value(value.data));
    }
    return {};
}

} // namespace vorq
