#include "platform/linux/x11/X11Workspace.h"

#include "platform/linux/desktop/ProcessExecutable.h"
#include "platform/linux/x11/X11Reply.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <ranges>
#include <set>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// The client message says that a pager asks, whose wish window managers grant.
constexpr std::uint32_t sourceIsPager = 2;

} // namespace

X11Workspace::X11Workspace(QObject* parent) : Workspace(parent) {
    if (!m_events.isUsable() || !m_requests.isUsable()) return;
    m_activeWindowAtom = m_requests.atom("_NET_ACTIVE_WINDOW");
    m_clientListAtom = m_requests.atom("_NET_CLIENT_LIST_STACKING");
    m_applicationIdAtom = m_requests.atom("_GTK_APPLICATION_ID");
    m_classAtom = XCB_ATOM_WM_CLASS;
    watchActiveWindow();
}

X11Workspace::~X11Workspace() = default;

PortSupport X11Workspace::supported() const {
    if (!m_requests.isUsable()) return std::unexpected(u"No X server answers."_s);
    if (!m_requests.numbers(m_requests.root(), m_requests.atom("_NET_SUPPORTING_WM_CHECK")).empty())
        return {};
    return std::unexpected(u"No window manager runs that says which application is in front."_s);
}

void X11Workspace::watchActiveWindow() {
    m_events.watchRootProperties();
    m_lastActive = static_cast<Window>(activeWindow().value_or(0));
    const int descriptor = xcb_get_file_descriptor(m_events.get());
    m_notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &X11Workspace::takeEvents);
}

void X11Workspace::takeEvents() {
    bool hasChanged = false;
    while (xcb_generic_event_t* event = xcb_poll_for_event(m_events.get())) {
        if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY) {
            const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event);
            hasChanged = hasChanged || change->atom == m_activeWindowAtom;
        }
        std::free(event);
    }
    if (!m_events.isUsable()) return m_notifier->setEnabled(false);
    if (hasChanged) noticeActiveWindow();
}

// Between two windows there is none for a moment, and window managers tell of one twice.
void X11Workspace::noticeActiveWindow() {
    const std::optional<WindowId> window = activeWindow();
    if (!window || *window == m_lastActive) return;
    const std::optional<ProcessId> process = processOf(*window);
    if (!process) return;
    m_lastActive = static_cast<Window>(*window);
    emit frontmostChanged(*process, *window);
}

std::optional<ProcessId> X11Workspace::frontmostProcess() const {
    const std::optional<WindowId> window = activeWindow();
    return window ? processOf(*window) : std::nullopt;
}

std::optional<WindowId> X11Workspace::activeWindow() const {
    const auto windows = m_requests.numbers(m_requests.root(), m_activeWindowAtom);
    if (windows.empty() || windows.front() == 0) return std::nullopt;
    return windows.front();
}

std::optional<RunningApplication> X11Workspace::application(ProcessId process) const {
    const std::optional<WindowId> shown = windowOf(process);
    if (!shown) return std::nullopt;
    const auto window = static_cast<Window>(*shown);
    RunningApplication application{.process = process, .identifier = {}, .name = {}};
    const QString className = windowClass(window);
    const QString executable = executableName(process);
    const QString declared = QString::fromUtf8(m_requests.property(window, m_applicationIdAtom));
    std::optional<DesktopEntry> entry;
    if (!declared.isEmpty()) {
        application.identifier = declared;
        entry = m_desktopEntries.withId(declared);
    } else {
        if (!className.isEmpty()) entry = m_desktopEntries.ofWindowClass(className);
        if (!entry && !executable.isEmpty()) entry = m_desktopEntries.ofExecutable(executable);
        const QString unlisted = className.isEmpty() ? executable : className;
        application.identifier = entry ? entry->id : unlisted;
    }
    if (entry) application.name = entry->name;
    if (application.name.isEmpty()) application.name = className.isEmpty() ? executable : className;
    return application;
}

std::vector<ProcessId> X11Workspace::processesWithWindows() const {
    std::set<ProcessId> processes;
    for (const Window window : m_requests.numbers(m_requests.root(), m_clientListAtom))
        if (const auto process = m_requests.processOf(window)) processes.insert(*process);
    return {processes.begin(), processes.end()};
}

// The window in front where it is the process's, else its topmost one.
std::optional<WindowId> X11Workspace::windowOf(ProcessId process) const {
    if (const auto active = activeWindow(); active && processOf(*active) == process) return active;
    const auto windows = m_requests.numbers(m_requests.root(), m_clientListAtom);
    for (const Window window : windows | std::views::reverse)
        if (m_requests.processOf(window) == process) return window;
    return std::nullopt;
}

// Programs of long ago set the plain name alone, which is in Latin-1.
QString X11Workspace::titleOf(WindowId window) const {
    const auto id = static_cast<Window>(window);
    const QByteArray name = m_requests.property(id, m_requests.atom("_NET_WM_NAME"));
    return name.isEmpty() ? QString::fromLatin1(m_requests.property(id, XCB_ATOM_WM_NAME))
                          : QString::fromUtf8(name);
}

// The second of two texts that each end with a zero; the first may hold names of folders.
QString X11Workspace::windowClass(Window window) const {
    const QByteArrayList names = m_requests.property(window, m_classAtom).split('\0');
    return names.size() > 1 ? QString::fromUtf8(names[1]) : QString();
}

std::optional<ProcessId> X11Workspace::processOf(WindowId window) const {
    // A server answers for any identifier within the range of a client, alive or not.
    const auto id = static_cast<Window>(window);
    if (!m_requests.isUsable()) return std::nullopt;
    xcb_connection_t* connection = m_requests.get();
    const xcb_get_window_attributes_cookie_t cookie = xcb_get_window_attributes(connection, id);
    const X11Reply<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(connection, cookie, nullptr));
    return reply ? m_requests.processOf(id) : std::nullopt;
}

void X11Workspace::activate(WindowId window) {
    if (!m_requests.isUsable() || !processOf(window)) return;
    askManager(static_cast<Window>(window), m_activeWindowAtom, sourceIsPager, XCB_CURRENT_TIME);
}

PortSupport X11Workspace::hide(ProcessId process) {
    constexpr std::uint32_t iconic = 3;
    const std::optional<WindowId> window = windowOf(process);
    if (!window) return std::unexpected(u"It has no window."_s);
    askManager(static_cast<Window>(*window), m_requests.atom("WM_CHANGE_STATE"), iconic, 0);
    return {};
}

// Window managers hear of wishes by messages to the root window about the one in question.
void X11Workspace::askManager(Window window, X11Connection::Atom wish, std::uint32_t first,
                              std::uint32_t second) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = wish;
    message.data.data32[0] = first;
    message.data.data32[1] = second;
    xcb_send_event(m_requests.get(), 0, m_requests.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(m_requests.get());
}

} // namespace vorq
