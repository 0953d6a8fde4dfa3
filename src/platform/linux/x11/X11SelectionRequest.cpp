#include "platform/linux/x11/X11SelectionRequest.h"

#include "platform/linux/x11/X11Reply.h"

#include <xcb/xcb.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace vorq {
namespace {

using Event = X11Reply<xcb_generic_event_t>;

constexpr std::uint8_t sentFlag = 0x80;

std::uint8_t kindOf(const Event& event) {
    return event->response_type & static_cast<std::uint8_t>(~sentFlag);
}

// How many bytes will come in pieces, at least; 0 if that is not told.
qsizetype announcedBytes(const QByteArray& announcement) {
    std::uint32_t bytes = 0;
    if (announcement.size() >= qsizetype{sizeof bytes})
        std::memcpy(&bytes, announcement.constData(), sizeof bytes);
    return static_cast<qsizetype>(bytes);
}

} // namespace

X11SelectionRequest::X11SelectionRequest(X11Connection& x11, X11Connection::Atom selection,
                                         std::stop_token stop)
    : m_x11(x11),
      m_selection(selection),
      m_property(x11.atom("VORQ_SELECTION")),
      m_piecewise(x11.atom("INCR")),
      m_stop(std::move(stop)),
      m_stopped(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!m_x11.isUsable()) return;
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    m_window = xcb_generate_id(m_x11.get());
    xcb_create_window(m_x11.get(), XCB_COPY_FROM_PARENT, m_window, m_x11.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
}

X11SelectionRequest::~X11SelectionRequest() {
    if (m_window != 0 && m_x11.isUsable()) {
        if (!m_isUnanswered) xcb_destroy_window(m_x11.get(), m_window);
        xcb_flush(m_x11.get());
        // What came for the window is of no use to anyone.
        while (const Event event{xcb_poll_for_event(m_x11.get())}) {
        }
    }
    if (m_stopped >= 0) ::close(m_stopped);
}

std::optional<QByteArray> X11SelectionRequest::convert(const char* target, qsizetype mostBytes) {
    if (m_window == 0) return std::nullopt;
    auto converted = convert(m_x11.atom(target), mostBytes);
    return converted ? std::optional(std::move(converted->bytes)) : std::nullopt;
}

std::expected<X11SelectionRequest::Converted, X11SelectionRequest::Failure>
X11SelectionRequest::convert(X11Connection::Atom form, qsizetype mostBytes) {
    if (m_window == 0 || m_stopped < 0) return std::unexpected(Failure::NotInTime);
    xcb_convert_selection(m_x11.get(), m_window, m_selection, form, m_property, XCB_CURRENT_TIME);
    bool isGiven = false;
    m_isUnanswered = true;
    const bool isAnswered = waitFor([&](const Event& event) {
        if (kindOf(event) != XCB_SELECTION_NOTIFY) return false;
        const auto* answer = reinterpret_cast<const xcb_selection_notify_event_t*>(event.get());
        if (answer->requestor != m_window || answer->target != form) return false;
        isGiven = answer->property == m_property;
        return true;
    });
    if (!isAnswered) return std::unexpected(Failure::NotInTime);
    m_isUnanswered = false;
    if (!isGiven) return std::unexpected(Failure::Refused);
    std::optional<Property> property = takeProperty(mostBytes);
    if (!property) return std::unexpected(Failure::NotInTime);
    if (property->contents.type == m_piecewise) {
        // To take the announcement is to ask for the first piece.
        m_isUnanswered = true;
        if (announcedBytes(property->contents.bytes) > mostBytes)
            return std::unexpected(Failure::TooLong);
        return collectPieces(mostBytes);
    }
    if (!property->isWhole) return std::unexpected(Failure::TooLong);
    return std::move(property->contents);
}

std::expected<X11SelectionRequest::Converted, X11SelectionRequest::Failure>
X11SelectionRequest::collectPieces(qsizetype mostBytes) {
    Converted whole;
    while (true) {
        const bool hasPiece = waitFor([this](const Event& event) {
            if (kindOf(event) != XCB_PROPERTY_NOTIFY) return false;
            const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
            return change->window == m_window && change->atom == m_property &&
                   change->state == XCB_PROPERTY_NEW_VALUE;
        });
        if (!hasPiece) return std::unexpected(Failure::NotInTime);
        const std::optional<Property> piece = takeProperty(mostBytes - whole.bytes.size());
        if (!piece) return std::unexpected(Failure::NotInTime);
        if (!piece->isWhole) return std::unexpected(Failure::TooLong);
        if (whole.type == 0) {
            whole.type = piece->contents.type;
            whole.unit = piece->contents.unit;
        }
        if (piece->contents.bytes.isEmpty()) {
            m_isUnanswered = false;
            return whole;
        }
        whole.bytes += piece->contents.bytes;
    }
}

// Taking it away is what asks for the next piece.
std::optional<X11SelectionRequest::Property>
X11SelectionRequest::takeProperty(qsizetype mostBytes) const {
    const auto length = static_cast<std::uint32_t>(mostBytes / 4 + 1);
    const X11Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_x11.get(),
                               xcb_get_property(m_x11.get(), 1, m_window, m_property,
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, length),
                               nullptr));
    if (!reply) return std::nullopt;
    Property property;
    property.contents = {
        .bytes = QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                            xcb_get_property_value_length(reply.get())),
        .type = reply->type,
        .unit = reply->format};
    property.isWhole = reply->bytes_after == 0 && property.contents.bytes.size() <= mostBytes;
    return property;
}

template<typename IsWanted>
bool X11SelectionRequest::waitFor(IsWanted isWanted) {
    const std::stop_callback onStop(m_stop, [this] { ::eventfd_write(m_stopped, 1); });
    xcb_flush(m_x11.get());
    while (!m_stop.stop_requested() && m_x11.isUsable()) {
        while (const Event event{xcb_poll_for_event(m_x11.get())})
            if (isWanted(event)) return true;
        if (!waitForData()) return false;
    }
    return false;
}

bool X11SelectionRequest::waitForData() const {
    std::array<pollfd, 2> watched{pollfd{xcb_get_file_descriptor(m_x11.get()), POLLIN, 0},
                                  pollfd{m_stopped, POLLIN, 0}};
    return ::poll(watched.data(), watched.size(), -1) > 0 || errno == EINTR;
}

} // namespace vorq
