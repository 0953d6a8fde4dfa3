#include "shell/window/OutsidePresses.h"

#include "shell/notices/ShellNotifications.h"

#include <utility>

namespace vorq {

OutsidePresses::OutsidePresses(const Platform& platform, IsInside isInside)
    : m_platform(platform), m_isInside(std::move(isInside)) {
    const PressMonitor* presses = &platform.presses;
    connect(presses, &PressMonitor::pressed, this, &OutsidePresses::handlePress);
    connect(presses, &PressMonitor::released, this, &OutsidePresses::handleRelease);
    connect(presses, &PressMonitor::dragBegan, this, [this] { m_isClickPending = false; });
    const ShellNotifications* notifications = &platform.notifications;
    connect(notifications, &ShellNotifications::vorqStatusMenuChanged, this,
            &OutsidePresses::handleStatusMenu);
    connect(notifications, &ShellNotifications::vorqWillOpenStatusMenu, this,
            &OutsidePresses::forgetSlowBar);
    connect(notifications, &ShellNotifications::vorqSuppressPanelOutsideClose, this,
            &OutsidePresses::handleSuppression);
}

OutsidePresses::~OutsidePresses() {
    stop();
    forgetSlowBar();
}

void OutsidePresses::start() {
    forgetSlowBar();
    if (std::exchange(m_isRunning, true)) return;
    m_platform.presses.start();
}

void OutsidePresses::stop() {
    if (!std::exchange(m_isRunning, false)) return;
    m_platform.presses.stop();
    forgetPress();
    m_statusMenu.giveBack();
}

void OutsidePresses::noteFront(WindowId window) {
    if (std::exchange(m_front, window) != window) forgetSlowBar();
}

void OutsidePresses::handlePress(const ScreenPress& press) {
    forgetSlowBar();
    if (!m_isRunning) return;
    forgetPress();
    if (isOnMenuOfOurs(press) || m_isInside(press)) return;
    if (dismissesStatusMenu() || m_platform.holds.isHeld()) return;
    if (press.surface == PressedSurface::ForeignBar) return awaitStatusItem();
    const bool isOurs = press.surface == PressedSurface::OwnWindow;
    if (isOurs || press.button != PressedButton::Left) return dismissLater();
    m_isClickPending = true;
}

void OutsidePresses::handleRelease() {
    if (std::exchange(m_isClickPending, false)) dismissLater();
}

bool OutsidePresses::isOnMenuOfOurs(const ScreenPress& press) const {
    switch (press.surface) {
    case PressedSurface::OwnMenu:
    case PressedSurface::OwnStatusItem:
        return true;
    case PressedSurface::ForeignMenu:
        // The bar draws it.
        return static_cast<bool>(m_statusMenu);
    default:
        return false;
    }
}

// A menu closes at any press beside it, whether its end is told or not.
bool OutsidePresses::dismissesStatusMenu() {
    const bool wasOpen = static_cast<bool>(m_statusMenu);
    m_statusMenu.giveBack();
    return wasOpen;
}

void OutsidePresses::awaitStatusItem() {
    m_decision = m_platform.clock.after(statusItemDelay, [this, front = m_front] {
        m_decision.reset();
        if (m_platform.holds.isHeld()) return;
        const bool isAboutAnother = m_front != front;
        emit dismissed();
        if (!isAboutAnother) awaitSlowBar();
    });
}

// A loaded machine shows menus late, and only the menu tells that the press was ours. The next
// press says what the user wants now.
void OutsidePresses::awaitSlowBar() {
    if (m_isRunning) return;
    m_platform.presses.start();
    m_slowBar = m_platform.clock.after(slowestBar, [this] { forgetSlowBar(); });
}

// Unless there was another press meanwhile that is not told yet.
void OutsidePresses::recall() {
    m_platform.presses.catchUp();
    if (!m_slowBar) return;
    forgetSlowBar();
    emit recalled();
}

void OutsidePresses::forgetSlowBar() {
    const auto timer = std::exchange(m_slowBar, std::nullopt);
    if (!timer) return;
    m_platform.clock.cancel(*timer);
    if (!m_isRunning) m_platform.presses.stop();
}

void OutsidePresses::dismissLater() {
    m_decision = m_platform.clock.after(Clock::Duration::zero(), [this] {
        m_decision.reset();
        if (!m_platform.holds.isHeld()) emit dismissed();
    });
}

void OutsidePresses::forgetPress() {
    m_isClickPending = false;
    if (const auto timer = std::exchange(m_decision, std::nullopt)) m_platform.clock.cancel(*timer);
}

void OutsidePresses::handleStatusMenu(bool isOpen) {
    if (isOpen && m_slowBar) recall();
    if (!m_isRunning || isOpen == static_cast<bool>(m_statusMenu)) return;
    if (isOpen) {
        m_statusMenu = m_platform.holds.take(PanelHoldKind::Menu);
    } else {
        // The press that closed the menu may not have been told yet.
        m_platform.presses.catchUp();
        m_statusMenu.giveBack();
    }
}

void OutsidePresses::handleSuppression(bool suppress) {
    if (suppress == static_cast<bool>(m_suppression)) return;
    if (suppress) {
        m_suppression = m_platform.holds.take(PanelHoldKind::Menu);
    } else {
        if (m_isRunning) m_platform.presses.catchUp();
        m_suppression.giveBack();
    }
}

} // namespace vorq
