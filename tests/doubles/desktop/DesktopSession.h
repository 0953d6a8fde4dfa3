#pragma once

#include "doubles/desktop/DesktopProgram.h"

#include <QByteArray>
#include <QPoint>
#include <QProcessEnvironment>
#include <QRect>
#include <QSize>
#include <QStringList>
#include <QTemporaryDir>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace vorq {
class X11Connection;
}

namespace vorq::desktop {

class WaylandCompositor;

/// What shows the windows of a session: an X server with a window manager, or a compositor for
/// Wayland with an X server of its own.
enum class SessionType { Openbox, Sway, KWin, Gnome };

struct SessionOptions {
    SessionType type = SessionType::Openbox;
    QSize screen{1280, 900};
    /// Whether there is a bus for accessibility at all; without, its service cannot be activated.
    bool hasAccessibilityBus = true;
    /// Whether toolkits are told to expose their windows, before any of them starts.
    bool isAccessibilityOn = true;
};

/// A desktop of the test's own: X server, window manager or compositor, session bus, accessibility
/// bus and a home of its own. Everything that runs in it is ended with it, and when the test dies.
///
/// The process of the test joins the session: its environment is that of the session while one
/// lives. One session at a time. Waits are bounded; whatever fails throws with a sentence that says
/// what, and names the Debian package if a program is missing.
class DesktopSession {
  public:
    using Window = std::uint32_t;
    using Condition = std::function<bool()>;

    explicit DesktopSession(const SessionOptions& options = {});
    DesktopSession(const DesktopSession&) = delete;
    DesktopSession& operator=(const DesktopSession&) = delete;
    ~DesktopSession();

    [[nodiscard]] QString home() const { return m_home.path(); }
    [[nodiscard]] const QString& display() const { return m_display; }
    [[nodiscard]] QString busAddress() const;
    [[nodiscard]] const QProcessEnvironment& environment() const { return m_environment; }

    /// Writes a file below the home, folders included, and gives its path.
    QString write(const QString& relativePath, const QByteArray& content) const;

    /// Starts a program in the session; `package` is what to install if it is missing.
    DesktopProgram& start(const QString& program, const QString& package,
                          const QStringList& arguments = {},
                          const QProcessEnvironment& additional = {});

    /// Tells toolkits whether to expose their windows.
    void switchAccessibility(bool on);

    /// Waits, and keeps the event loop of the test going. Throws if it does not come true in time.
    static void waitUntil(const QString& what, const Condition& isTrue,
                          std::chrono::seconds limit = std::chrono::seconds(20));

    /// The compositor of a Wayland session. Windows below are those of its X server alone, and keys
    /// and clicks reach no others.
    [[nodiscard]] WaylandCompositor& compositor() const;

    /// The windows that the window manager shows, the lowest first.
    [[nodiscard]] std::vector<Window> windows() const;

    /// Whether a window is on the screen. Some compositors list those that are hidden as well.
    [[nodiscard]] bool isShown(Window window) const;

    /// Waits for a window whose class or instance holds the text, in any case.
    [[nodiscard]] Window waitForWindow(const QString& windowClass,
                                       std::chrono::seconds limit = std::chrono::seconds(40)) const;

    /// Waits until there is no such window any more.
    void waitForNoWindow(const QString& windowClass) const;

    /// The process that owns a window.
    [[nodiscard]] std::int32_t processOf(Window window) const;

    /// What the program calls it.
    [[nodiscard]] QString titleOf(Window window) const;

    [[nodiscard]] Window activeWindow() const;

    /// Brings a window to the front and waits until it is there.
    void activate(Window window) const;

    /// Keys to whatever has the focus, as xdotool names them ("ctrl+a").
    void key(const QStringList& keys) const;
    void type(const QString& text) const;
    /// The pointer, in pixels of the screen from its top left.
    void click(QPoint at, int times = 1) const;
    void rightClick(QPoint at) const;
    void drag(QPoint from, QPoint to) const;
    /// Turns the wheel by so many steps, down or, if less than 0, up.
    void scroll(QPoint at, int steps) const;
    /// The place of a window's contents, in pixels of the screen.
    [[nodiscard]] QRect geometry(Window window) const;

    /// What is in a selection ("primary", "clipboard"), as other programs read it, as text or of
    /// the type; "" for nothing.
    [[nodiscard]] QByteArray selection(const QString& name, const QString& type = {}) const;

    /// Fills a selection from a program that then owns it, with a text or with what is of the type.
    DesktopProgram& own(const QString& name, const QByteArray& content, const QString& type = {});

  private:
    class JoinedEnvironment;

    void startOpenboxDesktop(const SessionOptions& options);
    void startWaylandDesktop(const SessionOptions& options);
    void startDisplay(QSize screen);
    void startBus(bool withAccessibility);
    void xdotool(const QStringList& arguments) const;
    [[nodiscard]] QString classOf(Window window) const;
    [[nodiscard]] bool isOfSession(const QString& process) const;
    void killAll() const;

    QTemporaryDir m_home;
    QByteArray m_mark;
    QString m_display;
    QProcessEnvironment m_environment;
    std::unique_ptr<JoinedEnvironment> m_joined;
    std::vector<std::unique_ptr<DesktopProgram>> m_programs;
    std::unique_ptr<WaylandCompositor> m_compositor;
    std::unique_ptr<X11Connection> m_x11;
};

} // namespace vorq::desktop
