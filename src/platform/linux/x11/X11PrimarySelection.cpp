#include "platform/linux/x11/X11PrimarySelection.h"

#include "platform/linux/desktop/SessionKind.h"
#include "platform/linux/x11/X11Reply.h"
#include "platform/linux/x11/X11SelectionRequest.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr qsizetype mostTargets = 4096; // bytes

std::uint64_t numberOf(const std::optional<QByteArray>& bytes) {
    std::uint32_t number = 0;
    if (bytes && bytes->size() >= 4) std::memcpy(&number, bytes->constData(), sizeof number);
    return number;
}

bool namesAtom(const std::optional<QByteArray>& bytes, X11Connection::Atom atom) {
    if (!bytes) return false;
    std::vector<X11Connection::Atom> atoms(static_cast<std::size_t>(bytes->size()) / 4);
    if (!atoms.empty()) std::memcpy(atoms.data(), bytes->constData(), atoms.size() * 4);
    return std::ranges::find(atoms, atom) != atoms.end();
}

} // namespace

X11PrimarySelection::X11PrimarySelection() = default;
X11PrimarySelection::~X11PrimarySelection() = default;

PortSupport X11PrimarySelection::supported() const {
    if (sessionKind() == SessionKind::Wayland)
        return std::unexpected(u"Under Wayland only applications of the X server hand it out."_s);
    if (!X11Connection().isUsable()) return std::unexpected(u"No X server answers."_s);
    return {};
}

X11Connection::Window X11PrimarySelection::owner() const {
    const X11Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_x11->get(), xcb_get_selection_owner(m_x11->get(), XCB_ATOM_PRIMARY), nullptr));
    return reply ? reply->owner : XCB_WINDOW_NONE;
}

std::optional<PrimarySelection::Highlight> X11PrimarySelection::highlightOf(ProcessId process,
                                                                            std::stop_token stop) {
    if (stop.stop_requested() || m_watch.isElsewhere(process)) return std::nullopt;
    if (!m_x11 || !m_x11->isUsable()) m_x11 = std::make_unique<X11Connection>();
    if (!m_x11->isUsable()) return std::nullopt;
    const X11Connection::Window window = owner();
    if (window == XCB_WINDOW_NONE || m_x11->processOf(window) != process) return std::nullopt;
    const auto converted = [&](const char* target, qsizetype mostBytes) {
        return X11SelectionRequest(*m_x11, XCB_ATOM_PRIMARY, stop).convert(target, mostBytes);
    };
    const std::optional<QByteArray> text = converted("UTF8_STRING", longestText);
    // Some owners give their text for whatever they do not know.
    const bool hasTimestamp =
        text && namesAtom(converted("TARGETS", mostTargets), m_x11->atom("TIMESTAMP"));
    const std::uint64_t timestamp =
        hasTimestamp ? numberOf(converted("TIMESTAMP", sizeof(std::uint32_t))) : 0;
    // All answers must be of one owner.
    if (!text || owner() != window) return std::nullopt;
    return Highlight{.text = QString::fromUtf8(*text),
                     .ownership = {.window = window, .timestamp = timestamp},
                     .mayBeUndone = m_watch.isClickedAway(process)};
}

} // namespace vorq
