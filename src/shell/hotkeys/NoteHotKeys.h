#pragma once

#include "capture/notes/NoteCaptureFlow.h"
#include "shell/hotkeys/HotKeyHandler.h"
#include "shell/notices/NoteAdvice.h"
#include "support/async/TaskSlot.h"

#include <QObject>
#include <QPointer>

#include <functional>

namespace vorq {

class FrontmostTracker;

/// The two hot keys for notes, whose outcome the tray shows for a moment. Main thread only.
class NoteHotKeys final : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object.
    NoteHotKeys(NoteCaptureFlow& notes, Workspace& workspace, FrontmostTracker& frontmost,
                QObject* parent = nullptr);

    /// Until the state is bound, both only flash failure.
    void setBound() { m_isBound = true; }

    void handleSaveNoteHotKey(const HotKeySource& source);

    /// The same as a command, of whatever is highlighted.
    void saveHighlightAsNote();

    void handlePushNoteHotKey();

    /// What a save held back goes into the notes all the same, or nowhere.
    void saveHeldText();
    void discardHeldText();

  signals:
    void flashNoteSaveStatus(bool succeeded);

    /// What can be said of the last save has changed.
    void adviceChanged(const vorq::NoteAdvice& advice);

  private:
    using Step =
        std::function<QCoro::Task<bool>(NoteCaptureFlow& notes, const std::stop_token& stop)>;

    [[nodiscard]] QString bundleIDOf(const HotKeySource& source,
                                     std::optional<ProcessId> resolved) const;
    void start(Step step);
    void startSaving(std::optional<ProcessId> sourcePID, const QString& bundleID);
    static QCoro::Task<> run(QPointer<NoteHotKeys> self, Step step, std::stop_token stop);
    void tellAdvice();

    NoteCaptureFlow& m_notes;
    Workspace& m_workspace;
    FrontmostTracker& m_frontmost;
    bool m_isBound = false;
    TaskSlot m_task;
};

} // namespace vorq
