#pragma once

#include "capture/selection/CaptureLog.h"
#include "capture/selection/CopyShortcut.h"
#include "capture/selection/PanelCapture.h"
#include "capture/selection/SelectionReader.h"
#include "capture/source/CaptureGate.h"
#include "platform/linux/atspi/AtSpiAccessibility.h"
#include "platform/linux/x11/X11PrimarySelection.h"

#include <QObject>

#include <memory>

namespace vorq {

class AppPaths;
class AtSpiBus;
class Screens;

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

    [[nodiscard]] bool isTrusted() const override { return m_panel.isTrusted(); }
    [[nodiscard]] std::optional<ProcessId> frontmostForeignProcess() const override;
    [[nodiscard]] QString applicationName(ProcessId process) const override;
    QCoro::Task<CapturedText> captureSelectedTextForHotKey(std::optional<ProcessId> source,
                                                           std::stop_token stop) override;
    void log(const QString& line) override { m_panel.log(line); }

  private:
    void takeScreens(const Screens& screens);

    AtSpiAccessibility m_accessibility;
    QObject m_screensObserver;
    X11PrimarySelection m_primary;
    NoCopyShortcut m_copyShortcut;
    CaptureLog m_log;
    CaptureGate m_gate;
    SelectionReader m_reader;
    PanelCapture m_panel;
};

} // namespace vorq
