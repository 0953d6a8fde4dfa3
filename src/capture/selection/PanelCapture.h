#pragma once

#include "capture/selection/PanelShowings.h"
#include "capture/selection/SelectionCapture.h"
#include "platform/PrimarySelection.h"

#include <QObject>

namespace vorq {

class CaptureGate;
class CaptureLog;
class CopyShortcut;
class SelectionReader;

/// What the panel's hot key captures: the selection of the focused element alone, else what is
/// highlighted, else, of few applications, what the copy shortcut gives. Main thread only.
///
/// What was highlighted once is not captured twice as PRIMARY while the panel stays open: the hot
/// key could not close it otherwise. Where a field for passwords has the focus, nothing is
/// captured, by no way. A text that accessibility has not told is held back if it reads like a
/// secret, and, of what shows web pages, if it may be a password and the page does not copy it.
class PanelCapture final : public QObject, public SelectionCapture {
    Q_OBJECT

  public:
    struct Services {
        SelectionReader& reader;
        const CaptureGate& gate;
        CopyShortcut& copyShortcut;
        const PanelShowings& showings;
        CaptureLog& log;
    };

    /// The services must outlive this object.
    explicit PanelCapture(const Services& services) : m_services(services) {}

    [[nodiscard]] bool isTrusted() const override;
    [[nodiscard]] std::optional<ProcessId> frontmostForeignProcess() const override;
    [[nodiscard]] QString applicationName(ProcessId process) const override;
    QCoro::Task<CapturedText> captureSelectedTextForHotKey(std::optional<ProcessId> source,
                                                           std::stop_token stop) override;
    void log(const QString& line) override;

  private:
    QCoro::Task<CapturedText> proved(std::optional<ProcessId> source, QString highlighted,
                                     std::stop_token stop);
    [[nodiscard]] bool wasCaptured(const PrimarySelection::Highlight& highlight) const;

    Services m_services;
    // What was captured as PRIMARY last, and in which showing of the panel.
    PrimarySelection::Highlight m_captured;
    std::uint64_t m_capturedInShowing = 0;
};

} // namespace vorq
