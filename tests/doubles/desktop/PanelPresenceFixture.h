#pragma once

#include "doubles/desktop/DragSource.h"
#include "doubles/desktop/PanelProgram.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <iostream>
#include <vector>

namespace vorq::desktop {

/// The built program beside an editor, and who has the screen and the keyboard.
class PanelPresenceTest : public testing::Test {
  protected:
    using Window = DesktopSession::Window;

    static void SetUpTestSuite() { s_desktop = std::make_unique<PanelProgram>(); }
    static void TearDownTestSuite() { s_desktop.reset(); }

    PanelPresenceTest() {
        m_source = openTextWindow(session, material.toUtf8());
        xdotool({"windowmove", QString::number(m_source.window), "700", "200"});
        session.own("primary", "of another program");
    }
    ~PanelPresenceTest() override {
        if (HasFailure()) std::cerr << vorq.program().output().toStdString();
        vorq.stop();
        for (DesktopProgram* started : m_started)
            started->kill();
        for (const Window window : session.windows()) {
            const std::int32_t process = session.processOf(window);
            if (process > 0) ::kill(process, SIGKILL);
        }
        DesktopSession::waitUntil("an empty desktop", [&] { return session.windows().empty(); });
    }

    void xdotool(const QStringList& arguments) const {
        run("xdotool", "xdotool", arguments, session.environment());
    }

    static void letSettle(int milliseconds = 600) {
        QElapsedTimer passed;
        passed.start();
        DesktopSession::waitUntil("time to pass", [&] { return passed.elapsed() >= milliseconds; });
    }

    void openPanel() {
        session.activate(m_source.window);
        vorq.pressHotKey();
        vorq.waitForPanel();
    }

    void selectAll() {
        session.activate(m_source.window);
        highlight(session, [&] { session.key({"ctrl+Home", "ctrl+a"}); }, material.toUtf8());
    }

    // Its window, on the screen or not.
    [[nodiscard]] bool isOnScreen(Window window) const {
        return run("xwininfo", "x11-utils", {"-id", QString::number(window)}, session.environment())
            .contains("Map State: IsViewable");
    }

    void rightClick(QPoint at) const {
        xdotool({"mousemove", QString::number(at.x()), QString::number(at.y()), "click", "3"});
    }

    [[nodiscard]] QPoint prompt() const {
        const QRect panel = session.geometry(vorq.panel());
        return {panel.center().x(), panel.bottom() - 40};
    }

    [[nodiscard]] QString draft() const {
        for (const AccessibleNode& node : vorq.controls())
            if (node.role == "text" && node.isShowing) return vorq.textOf(node);
        return {};
    }

    [[nodiscard]] bool isShowing(const QString& role) const {
        for (const AccessibleNode& node : vorq.controls())
            if (node.role == role && node.isShowing) return true;
        return false;
    }
    // Menus are windows that the window manager does not know.
    [[nodiscard]] bool isMenuOpen() const {
        const QByteArray windows =
            run("xdotool", "xdotool", {"search", "--onlyvisible", "--class", "vorq"},
                session.environment());
        constexpr int widestIcon = 60;
        const Window panel = vorq.panel();
        return std::ranges::any_of(windows.trimmed().split('\n'), [&](const QByteArray& line) {
            const Window window = line.toUInt();
            return window != panel && session.geometry(window).width() > widestIcon;
        });
    }
    void waitForMenu(bool isOpen = true) const {
        DesktopSession::waitUntil(isOpen ? "a menu" : "no menu",
                                  [&] { return isMenuOpen() == isOpen; });
    }

    [[nodiscard]] QPoint besideAll() const { return {1250, 30}; }

    // A click elsewhere takes the panel down, as ever.
    void expectClickHides() {
        session.click(besideAll());
        vorq.waitForNoPanel();
    }

    void expectStays(const char* why) {
        letSettle();
        EXPECT_NE(vorq.panel(), 0U) << why;
    }

    /// A window that files, or what else the arguments say, can be dragged out of.
    Window openDragSource(const QStringList& arguments) {
        DesktopProgram* started = nullptr;
        const Window window =
            vorq::desktop::openDragSource(session, arguments, {800, 550}, &started);
        m_started.push_back(started);
        letSettle();
        return window;
    }

    /// With the steps that a hand makes.
    void dragSlowly(QPoint from, QPoint to) const {
        dragAndHold(session, from, to);
        xdotool({"sleep", "0.3", "mouseup", "1"});
    }

    static inline std::unique_ptr<PanelProgram> s_desktop;
    PanelProgram& vorq = *s_desktop;
    DesktopSession& session = vorq.session;
    Application m_source;
    std::vector<DesktopProgram*> m_started;
};

} // namespace vorq::desktop
