#pragma once

#include "platform/Clock.h"
#include "platform/PressMonitor.h"
#include "platform/Screens.h"
#include "platform/Workspace.h"
#include "shell/PanelDock.h"
#include "shell/PanelPresence.h"
#include "shell/PanelWindow.h"

#include <QObject>

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
        ShellNotifications& notifications;
        /// Of this program.
        Workspace::ProcessId process;
    };

    PanelWindowController(const Platform& platform, PanelWindow& window);
    ~PanelWindowController() override;

    [[nodiscard]] bool isPanelVisible() const override { return m_isVisible; }
    void show() override;
    void hide() override;
    void setSuppressOutsideClose(bool suppress) override { m_suppressOutsideClose = suppress; }
    void yieldFocus() override;

    /// Takes the panel down unless something of ours keeps it up. Another program has the keyboard
    /// and keeps it.
    void hideForFocusElsewhere();

    /// Where the panel is docked, now or when it is shown next. It is remembered.
    [[nodiscard]] PanelDockTarget dock() const { return m_dock; }

  signals:
    void panelVisibleChanged();

  private:
    bool escapePressed() override;
    bool mouse(const PanelMouse& mouse) override;
    void mouseElsewhere() override { m_dockDragSession.reset(); }

    void setDockDragging(bool isOn);
    void pressedSomewhere(const ScreenPress& press);
    void hideIfClickIsOutsidePanel(const ScreenPress& press);
    void takeDown();
    void focusIfNobodyElseIs();

    void rememberSource();
    [[nodiscard]] bool isOurs(Workspace::WindowId window, Workspace::ProcessId process) const;
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
    bool m_suppressOutsideClose = false;
    bool m_isStatusMenuOpen = false;
    /// The foreign window that last had the keyboard.
    std::optional<Workspace::WindowId> m_source;
    std::optional<Clock::TimerId> m_focusTimer;
    std::optional<Clock::TimerId> m_afterHideTimer;
    std::optional<Clock::TimerId> m_barPressTimer;
};

} // namespace vorq
