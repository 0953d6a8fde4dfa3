#pragma once

#include "platform/Clock.h"
#include "platform/Screens.h"
#include "platform/Workspace.h"
#include "shell/window/OutsidePresses.h"
#include "shell/window/PanelDock.h"
#include "shell/window/PanelPresence.h"
#include "shell/window/PanelWindow.h"

#include <QObject>

#include <functional>
#include <optional>

namespace vorq {

class Defaults;
class ShellNotifications;

/// Shows the panel beside the work, keeps it docked on a screen that is there, takes it down on
/// Escape or a click elsewhere, and gives the keyboard back to the very window that had it. Main
/// thread only.
class PanelWindowController final : public QObject, public PanelPresence, private PanelWindowInput {
    Q_OBJECT
    Q_PROPERTY(bool isPanelVisible READ isPanelVisible NOTIFY panelVisibleChanged)

  public:
    /// What the system offers; all must outlive the controller.
    struct Platform {
        Clock& clock;
        Defaults& defaults;
        Screens& screens;
        Workspace& workspace;
        PressMonitor& presses;
        PanelHolds& holds;
        ShellNotifications& notifications;
        /// Of this program.
        ProcessId process;
    };

    PanelWindowController(const Platform& platform, PanelWindow& window);
    ~PanelWindowController() override;

    [[nodiscard]] bool isPanelVisible() const override { return m_isVisible; }
    void show() override;
    void showBeside() override;
    void hide() override;
    void yieldFocus() override;

    /// Takes the panel down unless something of ours keeps it up. Another program has the keyboard
    /// and keeps it.
    void hideForFocusElsewhere();

    /// Asked first when Escape is pressed in the panel: true if it has closed something that is
    /// open within, and the panel stays.
    void setCloseInnermost(std::function<bool()> close) { m_closeInnermost = std::move(close); }

    /// Where the panel is docked, now or when it is shown next. It is remembered.
    [[nodiscard]] PanelDockTarget dock() const { return m_dock; }

  signals:
    void panelVisibleChanged();

  private:
    bool escapePressed() override;
    bool mouse(const PanelMouse& mouse) override;
    void mouseElsewhere() override { m_dockDragSession.reset(); }
    void closed() override { hide(); }
    void exposureChanged() override;

    void setDockDragging(bool isOn);
    void takeKeyboard();
    [[nodiscard]] bool isOnPanel(const ScreenPress& press) const;
    void takeDown();
    void takeDownAndFocusNobody();
    void focusIfNobodyElseIs();

    void rememberSource();
    [[nodiscard]] bool isOurs(WindowId window, ProcessId process) const;
    [[nodiscard]] bool hasKeyboard() const;
    void giveBackKeyboard();

    [[nodiscard]] std::optional<Screen> screenOfWork() const;
    [[nodiscard]] std::optional<Screen> screenOfPanel() const;
    void placeOn(const Screen& screen, bool isAnimated);
    void followScreens();

    void pressMouse(const PanelMouse& mouse);
    bool take(const PanelDockStep& step);
    void setDock(PanelDockTarget dock);

    Platform m_platform;
    PanelWindow& m_window;
    PanelDockDragSession m_dockDragSession;
    PanelDockTarget m_dock = PanelDockTarget::Left;
    /// Where the panel stands.
    Screen m_screen;
    /// How far the window is off its dock for want of room, during a drag.
    QPointF m_clampOffset;
    bool m_isVisible = false;
    OutsidePresses m_outsidePresses;
    std::function<bool()> m_closeInnermost;
    /// The foreign window that last had the keyboard.
    std::optional<WindowId> m_source;
    std::optional<Clock::TimerId> m_focusTimer;
    std::optional<Clock::TimerId> m_afterHideTimer;
    std::optional<Clock::TimerId> m_exposureTimer;
};

} // namespace vorq
