#include "platform/linux/x11/X11PressMonitor.h"

#include "platform/Screens.h"
#include "platform/linux/desktop/SessionKind.h"
#include "platform/linux/x11/X11RawInput.h"
#include "platform/linux/x11/X11Reply.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QWindow>

#include <xcb/xcb.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr std::uint32_t leftButton = 1;
constexpr std::uint32_t rightButton = 3;

// The steps of a wheel are buttons to the server, in four directions.
constexpr bool isWheel(std::uint32_t button) {
    return button >= 4 && button <= 7;
}

std::uint8_t firstSelectionEvent(const X11Connection& connection) {
    if (!connection.isUsable()) return 0;
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(connection.get(), &xcb_xfixes_id);
    if (extension == nullptr || extension->present == 0) return 0;
    const auto cookie = xcb_xfixes_query_version(connection.get(), XCB_XFIXES_MAJOR_VERSION,
                                                 XCB_XFIXES_MINOR_VERSION);
    const X11Reply<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(connection.get(), cookie, nullptr));
    return version ? extension->first_event : std::uint8_t{0};
}

bool isPopup(const QObject& object) {
    return object.isWindowType() && static_cast<const QWindow&>(object).type() == Qt::Popup;
}

// It holds the pointer.
bool isPopupOpen() {
    return std::ranges::any_of(QGuiApplication::allWindows(), [](const QWindow* window) {
        return isPopup(*window) && window->isVisible();
    });
}

PressedSurface surfaceOf(const QWindow& window) {
    // Qt names the window of its tray icon after the class.
    if (window.objectName().startsWith("QSystemTrayIconSys"_L1))
        return PressedSurface::OwnStatusItem;
    const Qt::WindowType type = window.type();
    const bool isMenu = type == Qt::Popup || type == Qt::ToolTip || type == Qt::SplashScreen;
    return isMenu ? PressedSurface::OwnMenu : PressedSurface::OwnWindow;
}

ScreenPress pressOn(const QWindow& window, QPointF at) {
    ScreenPress press{.at = at, .surface = surfaceOf(window), .window = window.winId()};
    const QWindow* parent = window.transientParent();
    if (parent != nullptr && parent->handle() != nullptr) press.parent = parent->winId();
    return press;
}

PressedButton buttonOf(const QMouseEvent& event) {
    return event.button() == Qt::RightButton ? PressedButton::Right : PressedButton::Left;
}

} // namespace

X11PressMonitor::X11PressMonitor(const Screens& screens, QObject* parent)
    : PressMonitor(parent),
      m_screens(screens),
      m_events([this](const xcb_generic_event_t& event) { take(event); }),
      m_opcode(rawInputOpcode(m_events.connection())),
      m_firstSelectionEvent(firstSelectionEvent(m_events.connection())),
      m_dragAtom(m_requests.atom("XdndSelection")),
      m_typeAtom(m_requests.atom("_NET_WM_WINDOW_TYPE")),
      m_barTypes{m_requests.atom("_NET_WM_WINDOW_TYPE_DOCK")} {
    for (const char* type : {"MENU", "POPUP_MENU", "DROPDOWN_MENU", "COMBO", "TOOLTIP"})
        m_menuTypes.push_back(m_requests.atom(QByteArray("_NET_WM_WINDOW_TYPE_") + type));
}

PortSupport X11PressMonitor::supported() const {
    if (sessionKind() == SessionKind::Wayland)
        return std::unexpected(u"Wayland tells of no presses on other windows."_s);
    if (m_opcode == 0) return std::unexpected(u"The X server lacks the input extension."_s);
    return {};
}

void X11PressMonitor::start() {
    if (m_starts++ > 0) return;
    select();
    watchDrags(true);
    qGuiApp->installEventFilter(this);
}

void X11PressMonitor::stop() {
    if (m_starts == 0) return;
    --m_starts;
    if (m_starts > 0) return;
    qGuiApp->removeEventFilter(this);
    select();
    watchDrags(false);
}

void X11PressMonitor::startKeys() {
    if (m_keyStarts++ == 0) select();
}

void X11PressMonitor::stopKeys() {
    if (m_keyStarts == 0) return;
    --m_keyStarts;
    if (m_keyStarts == 0) select();
}

// What a press does to a menu happens as Qt deals with it. It is told of before, or the menu would
// be gone by then and the press be taken for one beside it.
bool X11PressMonitor::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress && watched->isWindowType())
        handleOwnPress(static_cast<const QWindow&>(*watched),
                       static_cast<const QMouseEvent&>(*event));
    return PressMonitor::eventFilter(watched, event);
}

// The server does not say where a press was, and a busy program asks when the pointer has gone on
// already. Of a press on a window of ours Qt knows it. One that was told wrongly is told again.
void X11PressMonitor::handleOwnPress(const QWindow& window, const QMouseEvent& event) {
    m_ownPress = OwnPress{.time = event.timestamp(),
                          .at = m_screens.flipped(event.globalPosition()),
                          .window = &window};
    catchUp();
    if (m_lastTime == m_ownPress->time && m_lastPress.window != window.winId())
        tell(buttonOf(event), m_ownPress->time);
    m_ownPress.reset();
}

void X11PressMonitor::select() {
    if (m_opcode == 0) return;
    constexpr std::uint32_t presses =
        XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
    constexpr std::uint32_t keys = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS;
    selectRawInput(m_events.connection(),
                   (m_starts > 0 ? presses : 0U) | (m_keyStarts > 0 ? keys : 0U));
}

void X11PressMonitor::watchDrags(bool isOn) {
    const X11Connection& connection = m_events.connection();
    if (m_firstSelectionEvent == 0 || !connection.isUsable()) return;
    xcb_xfixes_select_selection_input(connection.get(), connection.root(), m_dragAtom,
                                      isOn ? XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
                                           : 0U);
    xcb_flush(connection.get());
}

void X11PressMonitor::take(const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7f;
    if (type == XCB_GE_GENERIC) {
        takeInput(reinterpret_cast<const xcb_ge_generic_event_t&>(event));
    } else if (m_firstSelectionEvent != 0 &&
               type == m_firstSelectionEvent + XCB_XFIXES_SELECTION_NOTIFY) {
        const auto& change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
        if (change.selection == m_dragAtom && change.owner != XCB_WINDOW_NONE) emit dragBegan();
    }
}

void X11PressMonitor::takeInput(const xcb_ge_generic_event_t& event) {
    if (event.extension != m_opcode) return;
    if (event.event_type == XCB_INPUT_RAW_KEY_PRESS) return emit keyPressed();
    const auto& button = reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
    if (isWheel(button.detail) && event.event_type == XCB_INPUT_RAW_BUTTON_PRESS) emit scrolled();
    const bool isLeft = button.detail == leftButton;
    if (!isLeft && button.detail != rightButton) return;
    if (event.event_type == XCB_INPUT_RAW_BUTTON_PRESS)
        tell(isLeft ? PressedButton::Left : PressedButton::Right, button.time);
    else if (event.event_type == XCB_INPUT_RAW_BUTTON_RELEASE && isLeft)
        emit released();
}

void X11PressMonitor::tell(PressedButton button, std::uint64_t time) {
    const bool isOwn = m_ownPress && m_ownPress->time == time;
    m_lastPress = isOwn ? pressOn(*m_ownPress->window, m_ownPress->at) : pressUnderPointer();
    m_lastPress.button = button;
    if (isPopupOpen()) m_lastPress.surface = PressedSurface::OwnMenu;
    m_lastTime = time;
    emit pressed(m_lastPress);
}

ScreenPress X11PressMonitor::pressUnderPointer() const {
    const QPointF at = m_screens.pointer();
    const std::vector<Window> windows = windowsUnderPointer();
    const auto isUnderPointer = [&windows](const QWindow* each) {
        return each->handle() != nullptr &&
               std::ranges::find(windows, static_cast<Window>(each->winId())) != windows.end();
    };
    const QWindowList ours = QGuiApplication::allWindows();
    const auto own = std::ranges::find_if(ours, isUnderPointer);
    if (own != ours.end()) return pressOn(**own, at);
    return {.at = at, .surface = foreignSurface(windows)};
}

PressedSurface X11PressMonitor::foreignSurface(const std::vector<Window>& windows) const {
    const auto holds = [&](const std::vector<X11Connection::Atom>& types) {
        return std::ranges::any_of(windows, [&](Window each) { return hasType(each, types); });
    };
    if (holds(m_barTypes)) return PressedSurface::ForeignBar;
    return holds(m_menuTypes) ? PressedSurface::ForeignMenu : PressedSurface::Foreign;
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

bool X11PressMonitor::hasType(Window window, const std::vector<X11Connection::Atom>& types) const {
    const std::vector<std::uint32_t> own = m_requests.numbers(window, m_typeAtom);
    return std::ranges::find_first_of(own, types) != own.end();
}

} // namespace vorq
