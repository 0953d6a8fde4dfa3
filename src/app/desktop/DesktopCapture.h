#pragma once

#include "capture/copy/CopyFallback.h"
#include "capture/copy/PasteOver.h"
#include "capture/placement/SnapshotCapture.h"
#include "capture/placement/WindowHighlightSearch.h"
#include "capture/selection/CaptureLog.h"
#include "capture/selection/NoteCapture.h"
#include "capture/selection/PanelCapture.h"
#include "capture/selection/SelectionReader.h"
#include "capture/source/CaptureGate.h"

namespace vorq {

class DesktopPlatform;

/// Reads the selection of the user's other programs through the ports of the desktop. Needs a
/// QGuiApplication. Main thread only.
class DesktopCapture final : public SelectionCapture {
  public:
    /// Both must outlive the capture.
    DesktopCapture(DesktopPlatform& platform, const PanelShowings& showings);

    [[nodiscard]] bool isTrusted() const override { return m_panel.isTrusted(); }
    [[nodiscard]] std::optional<ProcessId> frontmostForeignProcess() const override;
    [[nodiscard]] QString applicationName(ProcessId process) const override;
    QCoro::Task<CapturedText> captureSelectedTextForHotKey(std::optional<ProcessId> source,
                                                           std::stop_token stop) override;
    void log(const QString& line) override { m_panel.log(line); }

    // What the note keys and the watch need beside it.
    [[nodiscard]] SelectionReader& reader() { return m_reader; }
    [[nodiscard]] NoteCapture& notes() { return m_notes; }
    [[nodiscard]] SnapshotCapture& snapshots() { return m_snapshots; }
    [[nodiscard]] const CaptureGate& gate() const { return m_gate; }
    [[nodiscard]] CaptureLog& captureLog() { return m_log; }

    [[nodiscard]] CopyShortcut& copyShortcut() { return m_copyShortcut; }

    /// For who writes over selections, which takes turns with all others that borrow the clipboard.
    /// The accessibility is the caller's own.
    [[nodiscard]] PasteOver::Services pasteOverServices(Accessibility& accessibility);

  private:
    DesktopPlatform& m_platform;
    TurnQueue m_clipboardTurns;
    CopyFallback m_copyShortcut;
    CaptureLog m_log;
    CaptureGate m_gate;
    SelectionReader m_reader;
    PanelCapture m_panel;
    NoteCapture m_notes;
    WindowHighlightSearch m_search;
    SnapshotCapture m_snapshots;
};

} // namespace vorq
