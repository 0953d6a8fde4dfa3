#pragma once

#include "doubles/desktop/DesktopSession.h"
#include "platform/linux/desktop/SystemClock.h"
#include "platform/linux/x11/X11Compositor.h"
#include "platform/linux/x11/X11OverlayHints.h"
#include "platform/linux/x11/X11PressMonitor.h"
#include "platform/linux/x11/X11Screens.h"
#include "platform/linux/x11/X11Workspace.h"
#include "platform/testing/ScriptedDefaults.h"
#include "shell/notices/ShellNotifications.h"
#include "shell/window/PanelWindowController.h"
#include "shell/window/QuickPanelWindow.h"

#include <QQmlEngine>
#include <QQuickItem>

#include <gmock/gmock.h>

#include <memory>

namespace vorq {

/// The session that the program of these tests has joined.
desktop::DesktopSession& desktopSession();

/// A real panel window with its controller, on a real desktop.
class PanelDesktopFixture : public testing::Test {
  protected:
    using Window = desktop::DesktopSession::Window;

    PanelDesktopFixture();
    ~PanelDesktopFixture() override;

    desktop::DesktopSession& m_session = desktopSession();
    SystemClock m_clock;
    ScriptedDefaults m_defaults;
    ShellNotifications m_notifications;
    PanelHolds m_holds;
    X11Screens m_screens;
    X11Compositor m_compositor;
    X11OverlayHints m_hints;
    X11PressMonitor m_presses{m_screens};
    X11Workspace m_workspace;
    QQmlEngine m_engine;
    QuickPanelWindow m_window;
    PanelWindowController m_controller;
    std::vector<desktop::DesktopProgram*> m_terminals;

    /// Starts a terminal that writes what is typed into a file of its name, and waits until it is
    /// in front.
    Window startTerminal(const QString& name, const QString& geometry = "60x20+800+300");
    /// What was typed into it, as far as lines are complete.
    [[nodiscard]] QByteArray typedInto(const QString& name) const;

    void waitUntil(const QString& what, const desktop::DesktopSession::Condition& isTrue) const;
    /// Lets everybody do what they were about to do.
    void letSettle(std::chrono::milliseconds time = std::chrono::milliseconds(300)) const;

    /// Has the scene paint for what shines through.
    void tellScene() const;
    void showPanel();
    void waitForHidden() const;
    [[nodiscard]] Window panel() const { return static_cast<Window>(m_window.winId()); }
    [[nodiscard]] QQuickItem* scene() const { return m_window.rootObject(); }

    /// Runs xdotool with the event loop going.
    void xdotool(const QStringList& arguments);
    /// A place in the panel, in pixels of the screen.
    [[nodiscard]] QPoint onPanel(int x, int y) const {
        return m_window.geometry().topLeft() + QPoint(x, y);
    }
    /// Presses, moves in steps and releases; the time is that of the whole motion.
    void drag(QPoint from, QPoint by, double seconds);
    [[nodiscard]] QRect dockedGeometry(PanelDockTarget target, std::size_t screen = 0) const;
    void waitForGeometry(const QRect& expected) const;

    /// The picture of the screen, kept under this name beside the test program.
    [[nodiscard]] QImage screenshot(const QString& name);
    [[nodiscard]] QByteArray property(Window window, const QString& name) const;
};

} // namespace vorq
