#include "doubles/desktop/PanelDesktopFixture.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>

namespace vorq {

using namespace std::chrono_literals;
using desktop::DesktopProgram;
using desktop::DesktopSession;

PanelDesktopFixture::PanelDesktopFixture()
    : m_window({.screens = m_screens, .compositor = m_compositor, .hints = m_hints}, &m_engine),
      m_controller({.clock = m_clock,
                    .defaults = m_defaults,
                    .screens = m_screens,
                    .workspace = m_workspace,
                    .presses = m_presses,
                    .holds = m_holds,
                    .notifications = m_notifications,
                    .process = static_cast<std::int32_t>(QCoreApplication::applicationPid())},
                   m_window) {
    m_window.setSource(QUrl::fromLocalFile(QStringLiteral(VORQ_PANEL_SCENE)));
    EXPECT_NE(m_window.rootObject(), nullptr);
    QObject::connect(&m_notifications, &ShellNotifications::vorqFocusPrompt, &m_window,
                     [this] { QMetaObject::invokeMethod(scene(), "focusField"); });
    QObject::connect(&m_compositor, &Compositor::changed, &m_window, [this] { tellScene(); });
    tellScene();
    m_window.prepare();
    // Away from the panel's docks.
    xdotool({"mousemove", "1900", "20"});
}

PanelDesktopFixture::~PanelDesktopFixture() {
    m_controller.hide();
    for (DesktopProgram* terminal : m_terminals)
        terminal->kill();
}

PanelDesktopFixture::Window PanelDesktopFixture::startTerminal(const QString& name,
                                                               const QString& geometry) {
    const QString file = m_session.write(name, {});
    m_terminals.push_back(&m_session.start(
        "xterm", "xterm",
        {"-class", name, "-geometry", geometry, "-e", "sh", "-c", "cat > " + file}));
    const Window window = m_session.waitForWindow(name);
    m_session.activate(window);
    return window;
}

QByteArray PanelDesktopFixture::typedInto(const QString& name) const {
    QFile file(m_session.home() + '/' + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void PanelDesktopFixture::waitUntil(const QString& what,
                                    const DesktopSession::Condition& isTrue) const {
    DesktopSession::waitUntil(what, isTrue);
}

void PanelDesktopFixture::letSettle(std::chrono::milliseconds time) const {
    QElapsedTimer passed;
    passed.start();
    waitUntil("time to pass", [&] { return passed.elapsed() >= time.count(); });
}

void PanelDesktopFixture::tellScene() const {
    scene()->setProperty("isOpaque", m_compositor.translucency() == Translucency::None);
}

void PanelDesktopFixture::showPanel() {
    m_controller.show();
    waitUntil("the panel to have the keyboard", [this] {
        return m_window.isExposed() && m_workspace.activeWindow() == m_window.winId() &&
               scene()->property("isFieldFocused").toBool();
    });
    letSettle(150ms); // the second request for the focus
}

void PanelDesktopFixture::waitForHidden() const {
    waitUntil("the panel to go", [this] { return !m_controller.isPanelVisible(); });
}

void PanelDesktopFixture::xdotool(const QStringList& arguments) {
    DesktopProgram& program = m_session.start("xdotool", "xdotool", arguments);
    waitUntil("xdotool to end", [&] { return !program.isRunning(); });
    letSettle(50ms);
}

void PanelDesktopFixture::drag(QPoint from, QPoint by, double seconds) {
    const auto place = [](QPoint at) {
        return QStringList{"mousemove", QString::number(at.x()), QString::number(at.y())};
    };
    constexpr int steps = 8;
    QStringList arguments = place(from) + QStringList{"mousedown", "1"};
    for (int step = 1; step <= steps; ++step)
        arguments += QStringList{"sleep", QString::number(seconds / steps)} +
                     place(from + by * step / steps);
    xdotool(arguments + QStringList{"sleep", "0.05", "mouseup", "1"});
}

QRect PanelDesktopFixture::dockedGeometry(PanelDockTarget target, std::size_t screen) const {
    const QRectF free = m_screens.screens().at(screen).visibleFrame;
    return m_screens.flipped(clampedToScreen(dockFrame(target, free), free)).toRect();
}

void PanelDesktopFixture::waitForGeometry(const QRect& expected) const {
    try {
        waitUntil("the panel to stand where it belongs",
                  [&] { return m_session.geometry(panel()) == expected; });
    } catch (const std::exception&) {
    }
    EXPECT_EQ(m_session.geometry(panel()), expected);
}

QImage PanelDesktopFixture::screenshot(const QString& name) {
    const QString file = QCoreApplication::applicationDirPath() + '/' + name + ".png";
    desktop::run("import", "imagemagick", {"-window", "root", file}, m_session.environment());
    return QImage(file);
}

QByteArray PanelDesktopFixture::property(Window window, const QString& name) const {
    return desktop::run("xprop", "x11-utils", {"-id", QString::number(window), name},
                        m_session.environment());
}

} // namespace vorq
