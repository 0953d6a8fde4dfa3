#pragma once

#include "capture/notes/NoteCaptureFlow.h"
#include "shell/hotkeys/HotKeyHandler.h"
#include "support/async/TaskSlot.h"

#include <QObject>
#include <QPointer>

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

  signals:
    void flashNoteSaveStatus(bool succeeded);

  private:
    [[nodiscard]] QString bundleIDOf(const HotKeySource& source,
                                     std::optional<ProcessId> resolved) const;
    void startSaving(std::optional<ProcessId> sourcePID, const QString& bundleID);
    static QCoro::Task<> save(QPointer<NoteHotKeys> self, std::optional<ProcessId> sourcePID,
                              QString bundleID, std::stop_token stop);

    NoteCaptureFlow& m_notes;
    Workspace& m_workspace;
    FrontmostTracker& m_frontmost;
    bool m_isBound = false;
    TaskSlot m_task;
};

} // namespace vorq
