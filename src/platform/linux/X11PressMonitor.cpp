#include "platform/linux/X11PressMonitor.h"

#include "platform/Screens.h"
#include "platform/linux/X11Reply.h"

#include <QGuiApplication>
#include <QWindow>

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <algorithm>

namespace vorq {
namespace {

// From 2.1 on raw events come through while somebody holds the pointer.
constexpr std::uint16_t inputMajor = 2;
constexpr std::uint16_t inputMinor = 1;
constexpr std::uint32_t leftButton = 1;
constexpr std::uint32_t rightButton = 3;

std::uint8_t inputOpcode(const X11Connection& connection) {
    if (!connection.isUsable()) return 0;
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(connection.get(), &xcb_input_id);
    if (extension == nullptr || extension->present == 0) return 0;
    const auto cookie = xcb_input_xi_query_version(connection.get(), inputMajor, inputMinor);
    const X11Reply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(connection.get(), cookie, nullptr));
    if (!version || version->major_version < inputMajor) return 0;
    const bool isRecent =
        version->major_version > inputMajor || version->minor_version >= inputMinor;
    return isRecent ? extension->major_opcode : std::uint8_t{0};
}

PressedSurface surfaceOf(const QWindow& window) {
    // Qt names the window of its tray icon after the class.
    if (window.objectName().startsWith(QLatin1StringView("QSystemTrayIconSys")))
        return PressedSurface::OwnStatusItem;
    const Qt::WindowType type = window.type();
    const bool isMenu = type == Qt::Popup || type == Qt::ToolTip || type == Qt::SplashScreen;
    return isMenu ? PressedSurface::OwnMenu : PressedSurface::OwnWindow;
}

} // namespace

X11PressMonitor::X11PressMonitor(const Screens& screens, QObject* parent)
    : PressMonitor(parent),
      m_screens(screens),
      m_events([this](const xcb_generic_event_t& event) { take(event); }),
      m_opcode(inputOpcode(m_events.connection())),
      m_typeAtom(m_requests.atom("_NET_WM_WINDOW_TYPE")),
      m_dockAtom(m_requests.atom("_NET_WM_WINDOW_TYPE_DOCK")) {}

void X11PressMonitor::select(bool isOn) {
    const X11Connection& connection = m_events.connection();
    if (m_opcode == 0 || !connection.isUsable()) return;
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{.head = {.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1},
                .mask = isOn ? XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS : 0U};
    xcb_input_xi_select_events(connection.get(), connection.root(), 1, &selection.head);
    xcb_flush(connection.get());
}

void X11PressMonitor::take(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) != XCB_GE_GENERIC) return;
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (generic.extension != m_opcode || generic.event_type != XCB_INPUT_RAW_BUTTON_PRESS) return;
    const auto& press = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
    if (press.detail == leftButton || press.detail == rightButton) tell();
}

void X11PressMonitor::tell() {
    ScreenPress press{.at = m_screens.pointer()};
    const std::vector<Window> windows = windowsUnderPointer();
    const auto isUnderPointer = [&windows](const QWindow* each) {
        return each->handle() != nullptr &&
               std::ranges::find(windows, static_cast<Window>(each->winId())) != windows.end();
    };
    const QWindowList ours = QGuiApplication::allWindows();
    const auto own = std::ranges::find_if(ours, isUnderPointer);
    if (own != ours.end()) {
        press.surface = surfaceOf(**own);
        press.window = (*own)->winId();
        const QWindow* parent = (*own)->transientParent();
        if (parent != nullptr && parent->handle() != nullptr) press.parent = parent->winId();
    } else if (std::ranges::any_of(windows, [this](Window window) { return isBar(window); })) {
        press.surface = PressedSurface::ForeignBar;
    }
    emit pressed(press);
}

// From the top level down to the innermost one.
std::vector<X11PressMonitor::Window> X11PressMonitor::windowsUnderPointer() const {
    std::vector<Window> windows;
    if (!m_requests.isUsable()) return windows;
    Window inside = m_requests.root();
    while (inside != 0) {
        const auto cookie = xcb_query_pointer(m_requests.get(), inside);
        const X11Reply<xcb_query_pointer_reply_t> reply(
            xcb_query_pointer_reply(m_requests.get(), cookie, nullptr));
        inside = reply ? reply->child : 0;
        if (inside != 0) windows.push_back(inside);
    }
    return windows;
}

bool X11PressMonitor::isBar(Window window) const {
    const std::vector<std::uint32_t> types = m_requests.numbers(window, m_typeAtom);
    return std::ranges::find(types, m_dockAtom) != types.end();
}

} // namespace vorq
