#include "app/desktop/DesktopCapture.h"

#include "platform/AppPaths.h"
#include "platform/DesktopPlatform.h"

namespace vorq {

DesktopCapture::DesktopCapture(DesktopPlatform& platform, const PanelShowings& showings)
    : m_platform(platform),
      m_copyShortcut(
          {platform.clock(), platform.pasteboard(), platform.keyPoster(), platform.workspace()},
          m_clipboardTurns),
      m_log(platform.clock(),
            CaptureLog::captureFileIn(platform.paths().applicationSupportFolder()),
            CaptureLog::placeFileOfEnvironment(), CaptureLog::commonPillFile()),
      m_gate(platform.accessibility(), platform.workspace(), platform.defaults()),
      m_reader({platform.clock(), platform.accessibility(), platform.primarySelection(), m_gate}),
      m_panel({m_reader, m_gate, m_copyShortcut, showings, m_log}),
      m_notes({m_reader, m_gate, m_copyShortcut}),
      m_search({platform.clock(), m_reader, platform.screenCapture(), platform.screens(),
                platform.appearance(), m_log}),
      m_snapshots({m_reader, m_gate, m_copyShortcut, m_search, platform.screens(), m_log}) {}

PasteOver::Services DesktopCapture::pasteOverServices(Accessibility& accessibility) {
    return {.clock = m_platform.clock(),
            .accessibility = accessibility,
            .pasteboard = m_platform.pasteboard(),
            .keys = m_platform.keyPoster(),
            .workspace = m_platform.workspace(),
            .copyShortcut = m_copyShortcut,
            .log = m_log,
            .turns = m_clipboardTurns};
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
