#include "platform/linux/x11/copying/X11ClipboardOwner.h"

#include "platform/linux/x11/X11Reply.h"

#include <xcb/xfixes.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <unistd.h>

namespace vorq {
namespace {

using ClipboardEvent = X11Reply<xcb_generic_event_t>;

// The number of the event that tells of a new owner; 0 without the extension.
std::uint8_t watchOwners(const X11Connection& x11, X11Connection::Window window,
                         X11Connection::Atom selection) {
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(x11.get(), &xcb_xfixes_id);
    if (extension == nullptr || extension->present == 0) return 0;
    const X11Reply<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        x11.get(), xcb_xfixes_query_version(x11.get(), 5, 0), nullptr));
    if (!version) return 0;
    xcb_xfixes_select_selection_input(x11.get(), window, selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    return static_cast<std::uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
}

bool isSane(const PasteboardForm& form) {
    const bool hasUnit = form.unit == 8 || form.unit == 16 || form.unit == 32;
    return hasUnit && !form.name.isEmpty() && !form.type.isEmpty();
}

} // namespace

X11ClipboardOwner::X11ClipboardOwner(const char* selection, Told told, Taken taken)
    : m_told(std::move(told)),
      m_taken(std::move(taken)),
      m_clipboard(m_x11.atom(selection)),
      m_manager(m_x11.atom("CLIPBOARD_MANAGER")),
      m_targets(m_x11.atom("TARGETS")),
      m_timestamp(m_x11.atom("TIMESTAMP")),
      m_multiple(m_x11.atom("MULTIPLE")),
      m_atomPair(m_x11.atom("ATOM_PAIR")),
      m_scratch(m_x11.atom("VORQ_CLIPBOARD")) {
    if (!m_x11.isUsable()) return;
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    m_window = xcb_generate_id(m_x11.get());
    xcb_create_window(m_x11.get(), XCB_COPY_FROM_PARENT, m_window, m_x11.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    m_fixesEvent = watchOwners(m_x11, m_window, m_clipboard);
    // Who owns it already has written once.
    if (const auto owner = ownerOf(m_clipboard)) noticeOwner(owner);
}

int X11ClipboardOwner::descriptor() const {
    return xcb_get_file_descriptor(m_x11.get());
}

X11Connection::Window X11ClipboardOwner::ownerOf(Atom selection) const {
    const X11Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_x11.get(), xcb_get_selection_owner(m_x11.get(), selection), nullptr));
    return reply ? reply->owner : XCB_WINDOW_NONE;
}

bool X11ClipboardOwner::handleEvents() {
    drain();
    m_transfers.dropStale(std::chrono::steady_clock::now());
    do
        xcb_flush(m_x11.get());
    while (handleQueued());
    return !m_transfers.isIdle();
}

void X11ClipboardOwner::drain() {
    while (const ClipboardEvent event{xcb_poll_for_event(m_x11.get())})
        handle(*event);
}

// While answers go out, events come in; the descriptor does not tell of them.
bool X11ClipboardOwner::handleQueued() {
    bool isAny = false;
    while (const ClipboardEvent event{xcb_poll_for_queued_event(m_x11.get())}) {
        handle(*event);
        isAny = true;
    }
    return isAny;
}

void X11ClipboardOwner::handle(const xcb_generic_event_t& event) {
    const std::uint8_t kind = event.response_type & 0x7f;
    if (kind == m_fixesEvent && m_fixesEvent != 0)
        return noticeOwner(
            reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event).owner);
    switch (kind) {
    case XCB_SELECTION_REQUEST:
        return answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
    case XCB_SELECTION_NOTIFY: {
        const auto& told = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
        m_isHandedOver = m_isHandedOver || told.selection == m_manager;
        return;
    }
    case XCB_DESTROY_NOTIFY:
        return m_transfers.handleGone(
            reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
    case XCB_PROPERTY_NOTIFY: {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (change.window == m_window) m_seenTime = change.time;
        if (change.state == XCB_PROPERTY_DELETE)
            m_transfers.handleTaken(change.window, change.atom);
        return;
    }
    default:
        return;
    }
}

// A clipboard manager that keeps what another has written has written nothing of its own.
void X11ClipboardOwner::noticeOwner(X11Connection::Window owner) {
    ++m_change.count;
    if (owner != m_window) m_served.reset();
    const std::optional<ProcessId> writer =
        owner == m_window ? std::optional<ProcessId>(::getpid()) : m_x11.processOf(owner);
    const bool isManager =
        writer && owner != m_window && writer == m_x11.processOf(ownerOf(m_manager));
    if (!isManager || !m_change.writer) m_change.writer = writer;
    m_told(m_change);
}

// When the server last changed something of ours, which is now.
std::uint32_t X11ClipboardOwner::serverTime() {
    m_seenTime.reset();
    xcb_change_property(m_x11.get(), XCB_PROP_MODE_APPEND, m_window, m_scratch, XCB_ATOM_INTEGER,
                        32, 0, nullptr);
    xcb_flush(m_x11.get());
    while (!m_seenTime) {
        const ClipboardEvent event{xcb_wait_for_event(m_x11.get())};
        if (!event) return XCB_CURRENT_TIME;
        handle(*event);
    }
    return *m_seenTime;
}

std::vector<X11ClipboardOwner::Served>
X11ClipboardOwner::prepared(PasteboardContents contents) const {
    std::vector<Served> served;
    for (PasteboardForm& form : contents) {
        if (!isSane(form)) continue;
        const Atom name = m_x11.atom(form.name);
        const Atom type = m_x11.atom(form.type);
        served.push_back({.name = name, .type = type, .form = std::move(form)});
    }
    return served;
}

std::optional<std::uint64_t> X11ClipboardOwner::write(PasteboardContents contents,
                                                      std::uint64_t over) {
    if (!isUsable() || m_fixesEvent == 0) return std::nullopt;
    std::vector<Served> served = prepared(std::move(contents));
    const std::uint32_t time = serverTime();
    const X11Connection::Window owner = served.empty() ? XCB_WINDOW_NONE : m_window;
    // Between the look at who wrote last and our own write nobody else comes.
    xcb_grab_server(m_x11.get());
    (void)ownerOf(m_clipboard);
    drain();
    const bool isUnchanged = m_change.count == over;
    if (isUnchanged) xcb_set_selection_owner(m_x11.get(), owner, m_clipboard, time);
    const bool isOurs = isUnchanged && ownerOf(m_clipboard) == owner;
    // The server tells us of ourselves, too.
    drain();
    xcb_ungrab_server(m_x11.get());
    xcb_flush(m_x11.get());
    if (!isOurs) return std::nullopt;
    m_served.reset();
    if (owner == m_window) m_served = std::move(served);
    m_ownedSince = time;
    return m_change.count;
}

void X11ClipboardOwner::answer(const xcb_selection_request_event_t& request) {
    // Old programs leave it out.
    const Atom property = request.property == XCB_ATOM_NONE ? request.target : request.property;
    const bool isGiven = request.selection == m_clipboard &&
                         (request.target == m_multiple ? giveSeveral(request, property)
                                                       : give(request, request.target, property));
    xcb_selection_notify_event_t told{};
    told.response_type = XCB_SELECTION_NOTIFY;
    told.time = request.time;
    told.requestor = request.requestor;
    told.selection = request.selection;
    told.target = request.target;
    told.property = isGiven ? property : XCB_ATOM_NONE;
    // All events have this size on the wire.
    std::array<char, 32> raw{};
    std::memcpy(raw.data(), &told, sizeof told);
    xcb_send_event(m_x11.get(), 0, request.requestor, 0, raw.data());
}

bool X11ClipboardOwner::give(const xcb_selection_request_event_t& request, Atom target,
                             Atom property) {
    if (!m_served) return false;
    if (target == m_timestamp) {
        giveNumbers(request.requestor, property, XCB_ATOM_INTEGER, {m_ownedSince});
        return true;
    }
    if (target == m_targets) {
        std::vector<std::uint32_t> names;
        for (const Served& served : *m_served)
            names.push_back(served.name);
        names.insert(names.end(), {m_targets, m_timestamp, m_multiple});
        giveNumbers(request.requestor, property, XCB_ATOM_ATOM, names);
        return true;
    }
    const auto found = std::ranges::find(*m_served, target, &Served::name);
    if (found == m_served->end()) return false;
    m_transfers.put({.window = request.requestor, .property = property, .type = found->type},
                    found->form);
    if (const auto taker = m_x11.processOf(request.requestor)) m_taken(*taker);
    return true;
}

// The property names pairs of a form and a property for it; those that are not given are taken out.
bool X11ClipboardOwner::giveSeveral(const xcb_selection_request_event_t& request, Atom property) {
    std::vector<std::uint32_t> pairs = m_x11.numbers(request.requestor, property);
    for (std::size_t at = 0; at + 1 < pairs.size(); at += 2)
        if (pairs[at] == m_multiple || !give(request, pairs[at], pairs[at + 1]))
            pairs[at + 1] = XCB_ATOM_NONE;
    giveNumbers(request.requestor, property, m_atomPair, pairs);
    return true;
}

void X11ClipboardOwner::giveNumbers(X11Connection::Window window, Atom property, Atom type,
                                    const std::vector<std::uint32_t>& numbers) const {
    xcb_change_property(m_x11.get(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<std::uint32_t>(numbers.size()), numbers.data());
}

bool X11ClipboardOwner::beginHandover() {
    if (!isUsable() || !m_served || ownerOf(m_manager) == XCB_WINDOW_NONE) return false;
    std::vector<std::uint32_t> names;
    for (const Served& served : *m_served)
        names.push_back(served.name);
    giveNumbers(m_window, m_scratch, XCB_ATOM_ATOM, names);
    xcb_convert_selection(m_x11.get(), m_window, m_manager, m_x11.atom("SAVE_TARGETS"), m_scratch,
                          m_ownedSince);
    xcb_flush(m_x11.get());
    return true;
}

} // namespace vorq
