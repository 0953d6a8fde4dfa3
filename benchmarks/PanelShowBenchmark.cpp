// From the hot key to the mapped window: the panel beside an empty Qt Quick window that was made
// before as well, on the same desktop and by the same kind of key. Needs an X server with a window
// manager; panel_show.py brings one up.

#include "KeyStopwatch.h"
#include "platform/linux/desktop/SystemClock.h"
#include "platform/linux/x11/X11Compositor.h"
#include "platform/linux/x11/X11OverlayHints.h"
#include "platform/linux/x11/X11PressMonitor.h"
#include "platform/linux/x11/X11Screens.h"
#include "platform/linux/x11/X11Workspace.h"
#include "platform/testing/ScriptedDefaults.h"
#include "shell/notices/PanelHold.h"
#include "shell/notices/ShellNotifications.h"
#include "shell/window/PanelWindowController.h"
#include "shell/window/QuickPanelWindow.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickWindow>

#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;

constexpr int rounds = 100;
constexpr int warmUpRounds = 3;
// F11 and F12 on the usual keyboard.
constexpr std::uint8_t panelKey = 95;
constexpr std::uint8_t plainKey = 96;

// Runs an action for each of two keys that are pressed anywhere.
class HotKeys final : public QAbstractNativeEventFilter {
  public:
    std::function<void()> onPanelKey;
    std::function<void()> onPlainKey;

    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
        const auto* event = static_cast<const xcb_generic_event_t*>(message);
        if ((event->response_type & 0x7f) != XCB_KEY_PRESS) return false;
        const auto* press = reinterpret_cast<const xcb_key_press_event_t*>(event);
        if (press->detail == panelKey) onPanelKey();
        if (press->detail == plainKey) onPlainKey();
        return true;
    }
};

std::vector<double> measure(std::uint8_t key, std::uint32_t window,
                            const std::function<void()>& hide) {
    KeyStopwatch stopwatch({key}, window);
    std::vector<double> times;
    for (int round = 0; round < warmUpRounds + rounds; ++round) {
        const double time = stopwatch.millisecondsToMapped();
        if (round >= warmUpRounds) times.push_back(time);
        std::this_thread::sleep_for(120ms);
        QMetaObject::invokeMethod(qGuiApp, hide, Qt::QueuedConnection);
        stopwatch.waitForUnmapped();
        std::this_thread::sleep_for(40ms);
    }
    std::ranges::sort(times);
    return times;
}

void grab(std::uint8_t key) {
    const vorq::X11Connection names;
    auto* connection = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    xcb_grab_key(connection, 0, names.root(), XCB_MOD_MASK_ANY, key, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    xcb_flush(connection);
}

} // namespace

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    vorq::SystemClock clock;
    vorq::ScriptedDefaults defaults;
    vorq::ShellNotifications notifications;
    vorq::X11Screens screens;
    vorq::X11Compositor compositor;
    vorq::X11OverlayHints hints;
    vorq::X11PressMonitor presses(screens);
    vorq::X11Workspace workspace;
    vorq::PanelHolds holds;
    QQmlEngine engine;
    vorq::QuickPanelWindow panel({.screens = screens, .compositor = compositor, .hints = hints},
                                 &engine);
    panel.setSource(QUrl::fromLocalFile(QStringLiteral(VORQ_PANEL_SCENE)));
    vorq::PanelWindowController controller(
        {.clock = clock,
         .defaults = defaults,
         .screens = screens,
         .workspace = workspace,
         .presses = presses,
         .holds = holds,
         .notifications = notifications,
         .process = static_cast<std::int32_t>(QCoreApplication::applicationPid())},
        panel);
    panel.prepare();
    QQuickWindow plain;
    plain.setGeometry(18, 165, 440, 750);
    plain.create();

    HotKeys keys;
    keys.onPanelKey = [&] { controller.show(); };
    keys.onPlainKey = [&] { plain.show(); };
    application.installNativeEventFilter(&keys);
    grab(panelKey);
    grab(plainKey);
    const auto panelWindow = static_cast<std::uint32_t>(panel.winId());
    const auto plainWindow = static_cast<std::uint32_t>(plain.winId());
    std::thread measuring([&] {
        const auto plainTimes = measure(plainKey, plainWindow, [&] { plain.hide(); });
        const auto panelTimes = measure(panelKey, panelWindow, [&] { controller.hide(); });
        reportTimes("empty", plainTimes);
        reportTimes("panel", panelTimes);
        std::printf("panel/empty at p50 %.2f, at p95 %.2f; budget 16 ms at p95\n",
                    percentile(panelTimes, 50) / percentile(plainTimes, 50),
                    percentile(panelTimes, 95) / percentile(plainTimes, 95));
        QMetaObject::invokeMethod(&application, &QCoreApplication::quit, Qt::QueuedConnection);
    });
    const int result = QGuiApplication::exec();
    measuring.join();
    return result;
}
