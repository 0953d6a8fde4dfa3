#pragma once

#include "capture/selection/CaptureLog.h"
#include "capture/selection/CaptureSurroundings.h"
#include "capture/selection/CaptureThread.h"
#include "capture/selection/CopyShortcut.h"
#include "capture/selection/SelectionCapture.h"
#include "capture/selection/SelectionSnapshot.h"
#include "capture/source/ExcludedApplications.h"
#include "platform/PrimarySelection.h"
#include "platform/Workspace.h"

#include <QObject>

#include <optional>

namespace vorq {

/// Reads what is highlighted in another application: by accessibility, else as the PRIMARY
/// selection, else by the copy shortcut. Main thread only.
///
/// Whatever waits for another application is done on a thread of its own and is given up after
/// `captureLimit` in all, the copy shortcut apart, which has its own pace.
///
/// Where a field for passwords has the focus, nothing is captured, by no way. An application that
/// the user has excluded is not asked at all. A text that accessibility has not told is held back
/// if it reads like a secret.
class TextCaptureService final : public QObject, public SelectionCapture {
  public:
    /// Of the whole time, accessibility gets so much, that the next rung has its turn as well.
    static constexpr std::chrono::milliseconds accessibilityLimit{180};
    /// Accessibility is so far ahead: most applications have answered by then, and need not be
    /// asked for PRIMARY at all. That is then read beside it, since an application that is slow to
    /// answer one is slow to answer both. What shows web pages hands passwords out as PRIMARY and
    /// is asked for it only once accessibility has told, or has taken too long to tell, what has
    /// the focus.
    static constexpr std::chrono::milliseconds headStart{30};
    static constexpr std::chrono::milliseconds captureLimit{250};

    struct Services {
        Clock& clock;
        Accessibility& accessibility;
        PrimarySelection& primary;
        Workspace& workspace;
        CopyShortcut& copyShortcut;
        CaptureSurroundings& surroundings;
        CaptureLog& log;
        Defaults& settings;
    };

    /// The services must outlive this object and whatever it has under way.
    explicit TextCaptureService(const Services& services);
    ~TextCaptureService() override;

    [[nodiscard]] bool isTrusted() const override;
    [[nodiscard]] std::optional<ProcessId> frontmostForeignProcess() const override;
    [[nodiscard]] QString applicationName(ProcessId process) const override;
    void log(const QString& line) override;

    /// For the panel: the focused element alone, and the copy shortcut for few applications. What
    /// was highlighted once is not captured twice as PRIMARY while the panel stays open.
    QCoro::Task<CapturedText> captureSelectedTextForHotKey(std::optional<ProcessId> source,
                                                           std::stop_token stop) override;

    /// For notes: whatever element has a selection, and the copy shortcut nearly always; the longer
    /// of both texts.
    QCoro::Task<CapturedText> captureSelectedTextForNoteSave(std::optional<ProcessId> source,
                                                             std::stop_token stop);

    /// The selection and its place. Without a mouse point, where the mouse is.
    QCoro::Task<SelectionSnapshot> captureSelection(std::optional<ProcessId> source,
                                                    std::optional<QPointF> mousePoint,
                                                    bool useScreenGeometry, std::stop_token stop);

    [[nodiscard]] bool isFinderSource(std::optional<ProcessId> source) const;

    /// Without a process, of the application in front.
    [[nodiscard]] bool isHotKeyCopyFallbackSource(std::optional<ProcessId> source) const;

  private:
    struct Reading;
    class Budget;
    using Read = std::function<void(const CaptureSource&, Reading&)>;
    using IsEnough = std::function<bool(const Reading&)>;

    // Without a source, what had the focus last is read, unless it may be behind one not known.
    [[nodiscard]] bool isReadable(std::optional<ProcessId> source) const;
    [[nodiscard]] QString identifierOf(std::optional<ProcessId> process) const;
    // Whoever has the focus is not asked unseen while some must not be asked: it is the application
    // in front then.
    [[nodiscard]] std::optional<ProcessId> settled(std::optional<ProcessId> source) const;
    // Of a settled source. Also true where it is unknown who would be asked.
    [[nodiscard]] bool isExcluded(std::optional<ProcessId> source) const;
    [[nodiscard]] Clock::Duration headStartOf(ProcessId process) const;
    [[nodiscard]] bool isColumnEditor(std::optional<ProcessId> source) const;
    [[nodiscard]] bool isStale(const std::optional<PrimarySelection::Highlight>& highlight,
                               ProcessId process) const;
    [[nodiscard]] bool wasCaptured(const PrimarySelection::Highlight& highlight) const;

    // Reads by accessibility; what came if it came in time.
    QCoro::Task<Reading> readAccessibility(std::optional<ProcessId> source, Read read,
                                           Clock::Duration limit, std::stop_token stop);
    // Begins after the head start, or when that is ended.
    QCoro::Task<std::optional<PrimarySelection::Highlight>>
    readPrimary(std::optional<ProcessId> source, Budget budget, std::stop_token headStartEnd,
                std::stop_token stop);
    // Reads both. The highlight is not waited for, and is none, where what accessibility told is
    // enough, or is that nothing is selected.
    QCoro::Task<Reading> readBoth(std::optional<ProcessId> source, Budget budget, Read read,
                                  IsEnough isEnough, std::stop_token stop);
    QCoro::Task<SelectionSnapshot> captureByCopy(std::optional<ProcessId> source, QPointF mouse,
                                                 bool useScreenGeometry, QString highlighted,
                                                 Clock::Duration limit, std::stop_token stop);
    [[nodiscard]] std::optional<SelectionSnapshot>
    snapshotAfterCopy(const Reading& reading, const QString& copied,
                      std::optional<ProcessId> source, QPointF mouse) const;

    Services m_services;
    ExcludedApplications m_excluded;
    CaptureThread m_thread;
    CaptureThread m_primaryThread;
    // What was captured as PRIMARY last, and in which showing of the panel.
    PrimarySelection::Highlight m_captured;
    std::uint64_t m_capturedInShowing = 0;
};

} // namespace vorq
