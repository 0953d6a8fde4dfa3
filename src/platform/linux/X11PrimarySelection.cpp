#include "platform/linux/X11PrimarySelection.h"

#include "platform/linux/X11SelectionRequest.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace vorq {
namespace {

std::uint64_t numberOf(const std::optional<QByteArray>& bytes) {
    std::uint32_t number = 0;
    if (bytes && bytes->size() >= 4) std::memcpy(&number, bytes->constData(), sizeof number);
    return number;
}

} // namespace

X11PrimarySelection::X11PrimarySelection() = default;
X11PrimarySelection::~X11PrimarySelection() = default;

X11Connection::Window X11PrimarySelection::owner() const {
    const std::unique_ptr<xcb_get_selection_owner_reply_t, decltype(&std::free)> reply(
        xcb_get_selection_owner_reply(
            m_x11->get(), xcb_get_selection_owner(m_x11->get(), XCB_ATOM_PRIMARY), nullptr),
        &std::free);
    return reply ? reply->owner : XCB_WINDOW_NONE;
}

std::optional<PrimarySelection::Highlight> X11PrimarySelection::highlightOf(ProcessId process,
                                                                            std::stop_token stop) {
    if (stop.stop_requested()) return std::nullopt;
    if (!m_x11 || !m_x11->isUsable()) m_x11 = std::make_unique<X11Connection>();
    if (!m_x11->isUsable()) return std::nullopt;
    const X11Connection::Window window = owner();
    if (window == XCB_WINDOW_NONE || m_x11->processOf(window) != process) return std::nullopt;
    X11SelectionRequest request(*m_x11, XCB_ATOM_PRIMARY, stop);
    const std::uint64_t timestamp = numberOf(request.convert("TIMESTAMP", sizeof(std::uint32_t)));
    const std::optional<QByteArray> text = request.convert("UTF8_STRING", longestText);
    // Both answers must be of one owner.
    if (!text || owner() != window) return std::nullopt;
    return Highlight{.text = QString::fromUtf8(*text),
                     .ownership = {.window = window, .timestamp = timestamp}};
}

} // namespace vorq
