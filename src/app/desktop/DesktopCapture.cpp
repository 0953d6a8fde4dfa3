#include "app/desktop/DesktopCapture.h"

#include "platform/AppPaths.h"
#include "platform/Screens.h"

namespace vorq {

class DesktopCapture::Surroundings final : public CaptureSurroundings {
  public:
    Surroundings(const Screens& screens, const PanelShowings& showings)
        : m_screens(screens), m_showings(showings) {}

    [[nodiscard]] ScreenLayout screens() const override {
        ScreenLayout layout;
        for (const Screen& screen : m_screens.screens())
            layout.frames.push_back(screen.frame);
        if (!layout.frames.empty()) layout.main = layout.frames.front();
        return layout;
    }

    [[nodiscard]] QPointF mouseLocation() const override { return m_screens.pointer(); }

    [[nodiscard]] std::uint64_t panelShowing() const override {
        return m_showings.isVisible ? m_showings.count : 0;
    }

    // Pictures of other programs' windows are not taken.
    QCoro::Task<std::optional<VisualHighlight>>
    highlightPlacementFromScreenshot(std::optional<std::int32_t>, QPointF,
                                     std::stop_token) override {
        co_return std::nullopt;
    }

  private:
    const Screens& m_screens;
    const PanelShowings& m_showings;
};

DesktopCapture::DesktopCapture(const Services& services)
    : m_surroundings(std::make_unique<Surroundings>(services.screens, services.showings)),
      m_accessibility(services.accessibilityBus),
      m_log(services.clock, CaptureLog::captureFileIn(services.paths.applicationSupportFolder()),
            CaptureLog::placeFileOfEnvironment()),
      m_service({services.clock, m_accessibility, m_primary, services.workspace, m_copyShortcut,
                 *m_surroundings, m_log, services.settings}) {
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
    return m_service.frontmostForeignProcess();
}

QString DesktopCapture::applicationName(ProcessId process) const {
    return m_service.applicationName(process);
}

QCoro::Task<CapturedText>
DesktopCapture::captureSelectedTextForHotKey(std::optional<ProcessId> source,
                                             std::stop_token stop) {
    return m_service.captureSelectedTextForHotKey(source, std::move(stop));
}

} // namespace vorq
