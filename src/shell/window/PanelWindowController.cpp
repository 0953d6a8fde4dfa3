#include "shell/window/PanelWindowController.h"

#include "platform/Defaults.h"
#include "shell/notices/ShellNotifications.h"
#include "support/RawNames.h"

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr Clock::Duration secondFocusDelay = 80ms;
// A window manager that starts anew takes all windows off for less than that.
constexpr Clock::Duration exposureDelay = 100ms;
// After it a window manager has given the keyboard to whom it wants.
constexpr Clock::Duration refocusDelay = 100ms;

const QString dockKey = u"vorq.panel.dock"_s;

constexpr auto dockNames = rawNames<PanelDockTarget>({{PanelDockTarget::Left, "left"},
                                                      {PanelDockTarget::Center, "center"},
                                                      {PanelDockTarget::Right, "right"}});

PanelDockTarget storedDock(const Defaults& defaults) {
    return dockNames.caseOf(defaults.string(dockKey)).value_or(PanelDockTarget::Left);
}

void forget(Clock& clock, std::optional<Clock::TimerId>& timer) {
    if (const auto id = std::exchange(timer, std::nullopt)) clock.cancel(*id);
}

} // namespace

PanelWindowController::PanelWindowController(const Platform& platform, PanelWindow& window)
    : m_platform(platform),
      m_window(window),
      m_dockDragSession([this](bool isOn) { setDockDragging(isOn); }),
      m_dock(storedDock(platform.defaults)),
      m_outsidePresses({platform.clock, platform.presses, platform.holds, platform.notifications},
                       [this](const ScreenPress& press) { return isOnPanel(press); }) {
    connect(&platform.screens, &Screens::changed, this, &PanelWindowController::followScreens);
    connect(&m_outsidePresses, &OutsidePresses::dismissed, this,
            &PanelWindowController::takeDownAndFocusNobody);
    connect(&m_outsidePresses, &OutsidePresses::recalled, this, &PanelWindowController::showBeside);
    connect(&platform.workspace, &Workspace::frontmostChanged, this,
            [this](std::int32_t process, quint64 active) {
                if (isOurs(active, process)) return;
                m_source = active != 0 ? std::optional<WindowId>(active) : std::nullopt;
                if (m_source) m_outsidePresses.noteFront(*m_source);
            });
    connect(&platform.notifications, &ShellNotifications::vorqHidePanel, this,
            &PanelWindowController::hide);
    if (const std::optional<Screen> screen = screenOfWork()) placeOn(*screen, false);
}

PanelWindowController::~PanelWindowController() {
    if (m_isVisible) takeDown();
    forget(m_platform.clock, m_afterHideTimer);
}

void PanelWindowController::show() {
    showBeside();
    takeKeyboard();
}

void PanelWindowController::showBeside() {
    // The window manager has taken it off; it comes up as if it were new.
    if (m_exposureTimer && !m_window.isOnScreen()) takeDown();
    forget(m_platform.clock, m_afterHideTimer);
    rememberSource();
    if (!m_isVisible) {
        if (const std::optional<Screen> screen = screenOfWork()) placeOn(*screen, false);
    }
    m_window.orderFront();
    m_window.setInput(this);
    m_outsidePresses.start();
    if (std::exchange(m_isVisible, true)) return;
    emit panelVisibleChanged();
}

void PanelWindowController::takeKeyboard() {
    m_window.activate();
    emit m_platform.notifications.vorqFocusPrompt();
    forget(m_platform.clock, m_focusTimer);
    m_focusTimer = m_platform.clock.after(secondFocusDelay, [this] {
        m_focusTimer.reset();
        emit m_platform.notifications.vorqFocusPrompt();
    });
}

void PanelWindowController::hide() {
    if (!m_isVisible) return;
    if (hasKeyboard()) giveBackKeyboard();
    takeDown();
}

void PanelWindowController::hideForFocusElsewhere() {
    if (m_isVisible && !m_platform.holds.isHeld()) takeDown();
}

void PanelWindowController::yieldFocus() {
    if (m_isVisible && hasKeyboard()) giveBackKeyboard();
}

void PanelWindowController::takeDown() {
    m_isVisible = false;
    forget(m_platform.clock, m_focusTimer);
    forget(m_platform.clock, m_exposureTimer);
    m_outsidePresses.stop();
    m_window.setInput(nullptr);
    m_dockDragSession.reset();
    m_window.orderOut();
    emit panelVisibleChanged();
}

void PanelWindowController::setDockDragging(bool isOn) {
    m_window.setDockDragging(isOn);
    if (isOn) emit m_platform.notifications.vorqClearChatGlyphIBeam();
    emit m_platform.notifications.vorqPanelDockDragChanged(isOn);
}

bool PanelWindowController::escapePressed() {
    if (!m_isVisible || m_window.isAnotherActive()) return false;
    if (m_closeInnermost && m_closeInnermost()) return true;
    QMetaObject::invokeMethod(this, &PanelWindowController::hide, Qt::QueuedConnection);
    return true;
}

bool PanelWindowController::isOnPanel(const ScreenPress& press) const {
    const bool isOurs = press.surface == PressedSurface::OwnWindow;
    if (isOurs && (press.window == m_window.id() || press.parent == m_window.id())) return true;
    return m_window.frame().contains(press.at);
}

void PanelWindowController::exposureChanged() {
    if (m_exposureTimer) return;
    m_exposureTimer = m_platform.clock.after(exposureDelay, [this] {
        m_exposureTimer.reset();
        if (!m_window.isOnScreen()) takeDownAndFocusNobody();
    });
}

// The user has gone elsewhere, and that says where the keyboard belongs. Only where that is nowhere
// it is left to us.
void PanelWindowController::takeDownAndFocusNobody() {
    takeDown();
    m_afterHideTimer = m_platform.clock.after(refocusDelay, [this] {
        m_afterHideTimer.reset();
        focusIfNobodyElseIs();
    });
}

void PanelWindowController::focusIfNobodyElseIs() {
    if (!m_platform.workspace.activeWindow()) giveBackKeyboard();
}

void PanelWindowController::rememberSource() {
    const std::optional<WindowId> active = m_platform.workspace.activeWindow();
    const auto process = active ? m_platform.workspace.processOf(*active) : std::nullopt;
    if (process && isOurs(*active, *process)) return;
    m_source = active;
    if (m_source) m_outsidePresses.noteFront(*m_source);
}

bool PanelWindowController::isOurs(WindowId window, ProcessId process) const {
    return process == m_platform.process || window == m_window.id();
}

// A user who has gone on to another window, be it ours, keeps it.
bool PanelWindowController::hasKeyboard() const {
    const std::optional<WindowId> active = m_platform.workspace.activeWindow();
    return !active || *active == m_window.id();
}

// A window that was minimised, or left behind on another workspace, is not brought up again.
void PanelWindowController::giveBackKeyboard() {
    if (m_source && m_platform.screens.windowFrame(*m_source))
        m_platform.workspace.activate(*m_source);
}

std::optional<Screen> PanelWindowController::screenOfWork() const {
    if (const std::optional<WindowId> active = m_platform.workspace.activeWindow()) {
        if (const std::optional<QRectF> frame = m_platform.screens.windowFrame(*active))
            return m_platform.screens.nearestScreen(frame->center());
    }
    return m_platform.screens.nearestScreen(m_platform.screens.pointer());
}

std::optional<Screen> PanelWindowController::screenOfPanel() const {
    return m_platform.screens.screen(m_window.frame().center(), m_screen);
}

void PanelWindowController::placeOn(const Screen& screen, bool isAnimated) {
    m_screen = screen;
    const QRectF frame = dockFrame(m_dock, screen.visibleFrame);
    m_window.setFrame(clampedToScreen(frame, screen.visibleFrame), isAnimated);
}

void PanelWindowController::followScreens() {
    if (!m_isVisible) return;
    std::optional<Screen> next = m_platform.screens.nearestScreen(m_screen.frame.center());
    for (const Screen& each : m_platform.screens.screens())
        if (each.name == m_screen.name) next = each;
    if (!next || *next == m_screen) return;
    m_dockDragSession.reset();
    placeOn(*next, false);
}

bool PanelWindowController::mouse(const PanelMouse& mouse) {
    switch (mouse.kind) {
    case PanelMouse::Kind::Down:
        pressMouse(mouse);
        return false;
    case PanelMouse::Kind::Dragged:
        return take(m_dockDragSession.mouseDragged(mouse.at, mouse.seconds));
    case PanelMouse::Kind::Up:
        return take(m_dockDragSession.mouseUp());
    }
    return false;
}

void PanelWindowController::pressMouse(const PanelMouse& mouse) {
    const std::optional<Screen> screen = screenOfPanel();
    PanelPress press{.at = mouse.at,
                     .yInWindow = mouse.yInWindow,
                     .target = mouse.target,
                     .windowFrame = m_window.frame(),
                     .visibleFrame = {},
                     .seconds = mouse.seconds};
    if (screen) {
        m_screen = *screen;
        press.visibleFrame = screen->visibleFrame;
        const QRectF docked =
            dockFrame(dockFrom(press.windowFrame, screen->visibleFrame), screen->visibleFrame);
        m_clampOffset = clampedToScreen(docked, screen->visibleFrame).topLeft() - docked.topLeft();
    }
    take(m_dockDragSession.mouseDown(press));
    // Text takes the focus that it needs by itself.
    if (mouse.target != PanelPressTarget::Plain) return;
    m_window.orderFront();
    m_window.activate();
    emit m_platform.notifications.vorqFocusPrompt();
}

bool PanelWindowController::take(const PanelDockStep& step) {
    if (step.frame && step.isAnimated) {
        setDock(dockFrom(*step.frame, m_screen.visibleFrame));
        placeOn(m_screen, true);
    } else if (step.frame) {
        m_window.setFrame(step.frame->translated(m_clampOffset), false);
    }
    return step.isSwallowed;
}

void PanelWindowController::setDock(PanelDockTarget dock) {
    if (dock == m_dock) return;
    m_dock = dock;
    m_platform.defaults.setString(dockKey, dockNames.nameOf(dock));
}

} // namespace vorq
