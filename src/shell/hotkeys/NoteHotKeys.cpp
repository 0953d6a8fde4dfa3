#include "shell/hotkeys/NoteHotKeys.h"

#include "capture/source/FrontmostTracker.h"
#include "shell/notices/ShellLog.h"

#include <utility>

namespace vorq {
namespace {

const QString noBundleID = QStringLiteral("(none)");

} // namespace

NoteHotKeys::NoteHotKeys(NoteCaptureFlow& notes, Workspace& workspace, FrontmostTracker& frontmost,
                         QObject* parent)
    : QObject(parent), m_notes(notes), m_workspace(workspace), m_frontmost(frontmost) {}

void NoteHotKeys::handleSaveNoteHotKey(const HotKeySource& source) {
    const auto resolved = m_frontmost.resolveSourcePID(source.process);
    const QString bundleID = bundleIDOf(source, resolved);
    qCInfo(shellLog, "Vorq ⌘⇧S note hotkey — source: %s pid=%s", qUtf8Printable(bundleID),
           resolved ? qUtf8Printable(QString::number(*resolved)) : "nil");
    if (!m_isBound) {
        qCWarning(shellLog, "Vorq ⌘⇧S ignored — appState not bound yet.");
        emit flashNoteSaveStatus(false);
        return;
    }
    startSaving(resolved, bundleID);
}

void NoteHotKeys::saveHighlightAsNote() {
    startSaving(std::nullopt, noBundleID);
}

void NoteHotKeys::startSaving(std::optional<ProcessId> sourcePID, const QString& bundleID) {
    // Each is a save of its own.
    m_task.release();
    m_task.restart([self = QPointer(this), sourcePID, bundleID](std::stop_token stop) {
        return save(self, sourcePID, bundleID, std::move(stop));
    });
}

QCoro::Task<> NoteHotKeys::save(QPointer<NoteHotKeys> self, std::optional<ProcessId> sourcePID,
                                QString bundleID, std::stop_token stop) {
    if (!self || stop.stop_requested()) co_return;
    NoteCaptureFlow& notes = self->m_notes;
    const bool isSaved = co_await notes.saveNoteFromSelection(sourcePID, bundleID, false, stop);
    if (!self || stop.stop_requested()) co_return;
    emit self->flashNoteSaveStatus(isSaved);
    if (!isSaved)
        qCWarning(shellLog, "Vorq ⌘⇧S note save failed: %s",
                  qUtf8Printable(notes.libraryMessage()));
}

QString NoteHotKeys::bundleIDOf(const HotKeySource& source,
                                std::optional<ProcessId> resolved) const {
    if (!source.bundleIdentifier.isEmpty()) return source.bundleIdentifier;
    const auto application = resolved ? m_workspace.application(*resolved) : std::nullopt;
    const QString identifier = application ? application->identifier : QString();
    return identifier.isEmpty() ? noBundleID : identifier;
}

void NoteHotKeys::handlePushNoteHotKey() {
    qCInfo(shellLog, "Vorq ⌘⇧P push-note hotkey");
    if (!m_isBound) {
        qCWarning(shellLog, "Vorq ⌘⇧P ignored — appState not bound yet.");
        emit flashNoteSaveStatus(false);
        return;
    }
    const bool isPushed = m_notes.pushAppleNoteDraft();
    emit flashNoteSaveStatus(isPushed);
    if (!isPushed) qCWarning(shellLog, "Vorq ⌘⇧P — no open note draft to push.");
}

} // namespace vorq
