#pragma once

#include "capture/selection/CaptureLog.h"
#include "capture/selection/CaptureSurroundings.h"
#include "capture/selection/TextCaptureService.h"
#include "platform/linux/atspi/AtSpiAccessibility.h"
#include "platform/linux/x11/X11PrimarySelection.h"

#include <QObject>

#include <memory>

namespace vorq {

class AppPaths;
class AtSpiBus;
class Screens;

/// How often the panel has been shown, and whether it is up. What was highlighted once is captured
/// once a showing.
struct PanelShowings {
    std::uint64_t count = 0;
    bool isVisible = false;
};

/// Reads the selection of the user's other programs, over the accessibility bus and the X server.
/// Needs a QGuiApplication. Main thread only.
class DesktopCapture final : public SelectionCapture {
  public:
    struct Services {
        Clock& clock;
        AppPaths& paths;
        Workspace& workspace;
        const Screens& screens;
        const PanelShowings& showings;
        Defaults& settings;
        std::shared_ptr<AtSpiBus> accessibilityBus;
    };

    /// The services must outlive the capture.
    explicit DesktopCapture(const Services& services);

    [[nodiscard]] AtSpiAccessibility& accessibility() { return m_accessibility; }

    [[nodiscard]] bool isTrusted() const override { return m_service.isTrusted(); }
    [[nodiscard]] std::optional<ProcessId> frontmostForeignProcess() const override;
    [[nodiscard]] QString applicationName(ProcessId process) const override;
    QCoro::Task<CapturedText> captureSelectedTextForHotKey(std::optional<ProcessId> source,
                                                           std::stop_token stop) override;
    void log(const QString& line) override { m_service.log(line); }

  private:
    class Surroundings;

    void takeScreens(const Screens& screens);

    std::unique_ptr<CaptureSurroundings> m_surroundings;
    AtSpiAccessibility m_accessibility;
    QObject m_screensObserver;
    X11PrimarySelection m_primary;
    NoCopyShortcut m_copyShortcut;
    CaptureLog m_log;
    TextCaptureService m_service;
};

} // namespace vorq
