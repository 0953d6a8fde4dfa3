#pragma once

#include "platform/testing/ManualClock.h"
#include "platform/testing/ScriptedDefaults.h"
#include "platform/testing/ScriptedPresses.h"
#include "platform/testing/ScriptedScreens.h"
#include "platform/testing/ScriptedWorkspace.h"
#include "shell/notices/ShellNotifications.h"
#include "shell/window/PanelWindowController.h"

#include <gmock/gmock.h>

#include <memory>

namespace vorq {

/// A panel's window that only notes what becomes of it.
class ScriptedPanelWindow final : public PanelWindow {
  public:
    static constexpr WindowId number = 90;

    explicit ScriptedPanelWindow(ScriptedWorkspace& workspace) : m_workspace(workspace) {}

    QRectF at;
    bool wasAnimated = false;
    bool isShown = false;
    bool isAnotherOfOursActive = false;
    PanelWindowInput* input = nullptr;
    /// "front", "activate", "out", in order.
    std::vector<std::string> calls;
    std::vector<bool> dockDragging;

    [[nodiscard]] WindowId id() const override { return number; }
    [[nodiscard]] QRectF frame() const override { return at; }
    void setFrame(const QRectF& frame, bool isAnimated) override {
        at = frame;
        wasAnimated = isAnimated;
    }
    void orderFront() override {
        isShown = true;
        calls.emplace_back("front");
    }
    void activate() override {
        calls.emplace_back("activate");
        m_workspace.bringToFront(number);
    }
    void orderOut() override {
        isShown = false;
        calls.emplace_back("out");
        if (m_workspace.activeWindow() == number) m_workspace.bringNoneToFront();
    }
    [[nodiscard]] bool isOnScreen() const override { return isShown; }
    [[nodiscard]] bool isAnotherActive() const override { return isAnotherOfOursActive; }
    void setDockDragging(bool isOn) override { dockDragging.push_back(isOn); }
    void setInput(PanelWindowInput* newInput) override { input = newInput; }

  private:
    ScriptedWorkspace& m_workspace;
};

/// A controller over a session of two applications, "writer" being in front at (200, 200).
class PanelWindowFixture : public testing::Test {
  protected:
    static constexpr ProcessId writer = 10;
    static constexpr ProcessId browser = 11;
    static constexpr ProcessId ours = 91;

    ManualClock m_clock;
    ScriptedDefaults m_defaults;
    ScriptedScreens m_screens;
    ScriptedWorkspace m_workspace;
    ScriptedPresses m_presses;
    PanelHolds m_holds;
    ShellNotifications m_notifications;
    ScriptedPanelWindow m_window{m_workspace};
    std::unique_ptr<PanelWindowController> m_controller;
    int m_focusPrompts = 0;

    void SetUp() override {
        for (const ProcessId process : {writer, browser, ours})
            m_workspace.launch({.process = process, .identifier = {}, .name = {}});
        m_workspace.launch({.process = ScriptedPanelWindow::number, .identifier = {}, .name = {}});
        m_screens.windows[writer] = {200, 200, 800, 600};
        m_screens.windows[browser] = {900, 200, 800, 600};
        m_workspace.bringToFront(writer);
        QObject::connect(&m_notifications, &ShellNotifications::vorqFocusPrompt,
                         [this] { ++m_focusPrompts; });
        start();
    }

    void start() {
        m_controller = std::make_unique<PanelWindowController>(
            PanelWindowController::Platform{.clock = m_clock,
                                            .defaults = m_defaults,
                                            .screens = m_screens,
                                            .workspace = m_workspace,
                                            .presses = m_presses,
                                            .holds = m_holds,
                                            .notifications = m_notifications,
                                            .process = ours},
            m_window);
    }

    void clickAt(QPointF at, PressedSurface surface = PressedSurface::Foreign, WindowId window = 0,
                 WindowId parent = 0) {
        m_presses.click({.at = at, .surface = surface, .window = window, .parent = parent});
        m_clock.advance(Clock::Duration::zero());
    }

    bool mouse(PanelMouse::Kind kind, QPointF at, double seconds,
               PanelPressTarget target = PanelPressTarget::Plain) {
        return m_window.input->mouse({.kind = kind,
                                      .at = at,
                                      .yInWindow = at.y() - m_window.at.top(),
                                      .target = target,
                                      .seconds = seconds});
    }

    /// Slowly, from the panel's middle; answers whether the release was swallowed.
    bool drag(QPointF by) {
        const QPointF from = m_window.at.center();
        mouse(PanelMouse::Kind::Down, from, 0);
        mouse(PanelMouse::Kind::Dragged, from + by, 2);
        return mouse(PanelMouse::Kind::Up, from + by, 3);
    }

    [[nodiscard]] QRectF docked(PanelDockTarget target, std::size_t screen = 0) const {
        return dockFrame(target, m_screens.all[screen].visibleFrame);
    }
};

} // namespace vorq
