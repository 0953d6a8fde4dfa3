#include "platform/linux/x11/copying/X11PieceTransfers.h"

#include <xcb/xcb.h>

#include <algorithm>

namespace vorq {

X11PieceTransfers::X11PieceTransfers(X11Connection& x11)
    : m_x11(x11), m_piecewise(x11.atom("INCR")) {}

void X11PieceTransfers::change(const Target& target, std::uint8_t unit,
                               QByteArrayView bytes) const {
    const auto count = static_cast<std::uint32_t>(bytes.size() / (unit / 8));
    xcb_change_property(m_x11.get(), XCB_PROP_MODE_REPLACE, target.window, target.property,
                        target.type, unit, count, bytes.data());
}

void X11PieceTransfers::put(const Target& target, const PasteboardForm& form) {
    if (form.bytes.size() <= longestPiece) return change(target, form.unit, form.bytes);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_x11.get(), target.window, XCB_CW_EVENT_MASK, &events);
    // One that asks for the same again has given up on the former.
    std::erase_if(m_transfers, [&](const Transfer& transfer) {
        return transfer.target.window == target.window &&
               transfer.target.property == target.property;
    });
    m_transfers.push_back({.target = target,
                           .bytes = form.bytes,
                           .unit = form.unit,
                           .latest = std::chrono::steady_clock::now()});
    const auto size = static_cast<std::uint32_t>(form.bytes.size());
    xcb_change_property(m_x11.get(), XCB_PROP_MODE_REPLACE, target.window, target.property,
                        m_piecewise, 32, 1, &size);
}

// A piece of nothing tells that all is there.
void X11PieceTransfers::handleTaken(X11Connection::Window window, X11Connection::Atom property) {
    const auto found = std::ranges::find_if(m_transfers, [&](const Transfer& transfer) {
        return transfer.target.window == window && transfer.target.property == property;
    });
    if (found == m_transfers.end()) return;
    const qsizetype length = std::min(longestPiece, found->bytes.size() - found->done);
    change(found->target, found->unit, QByteArrayView(found->bytes).sliced(found->done, length));
    found->done += length;
    found->latest = std::chrono::steady_clock::now();
    if (length == 0) m_transfers.erase(found);
}

void X11PieceTransfers::handleGone(X11Connection::Window window) {
    std::erase_if(m_transfers,
                  [window](const Transfer& transfer) { return transfer.target.window == window; });
}

void X11PieceTransfers::dropStale(Moment now) {
    std::erase_if(m_transfers,
                  [now](const Transfer& transfer) { return now - transfer.latest > patience; });
}

} // namespace vorq
