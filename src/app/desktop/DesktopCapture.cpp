#include "app/desktop/DesktopCapture.h"

#include "platform/AppPaths.h"
#include "platform/Screens.h"

namespace vorq {

DesktopCapture::DesktopCapture(const Services& services)
    : m_accessibility(services.accessibilityBus),
      m_log(services.clock, CaptureLog::captureFileIn(services.paths.applicationSupportFolder()),
            CaptureLog::placeFileOfEnvironment()),
      m_gate(m_accessibility, services.workspace, services.settings),
      m_reader({services.clock, m_accessibility, m_primary, m_gate}),
      m_panel({m_reader, m_gate, m_copyShortcut, services.showings, m_log}) {
    const Screens* screens = &services.screens;
    QObject::connect(screens, &Screens::changed, &m_screensObserver,
                     [this, screens] { takeScreens(*screens); });
    takeScreens(*screens);
}

void DesktopCapture::takeScreens(const Screens& screens) {
    std::vector<PixelScreen> all;
    for (const Screen& screen : screens.screens()) {
        const QRectF points = screens.flipped(screen.frame);
        all.push_back(
            {.pixels = QRect(points.topLeft().toPoint(), (points.size() * screen.scale).toSize()),
             .scale = screen.scale});
    }
    m_accessibility.setScreens(std::move(all));
}

std::optional<ProcessId> DesktopCapture::frontmostForeignProcess() const {
    return m_panel.frontmostForeignProcess();
}

QString DesktopCapture::applicationName(ProcessId process) const {
    return m_panel.applicationName(process);
}

QCoro::Task<CapturedText>
DesktopCapture::captureSelectedTextForHotKey(std::optional<ProcessId> source,
                                             std::stop_token stop) {
    return m_panel.captureSelectedTextForHotKey(source, std::move(stop));
}

} // namespace vorq
