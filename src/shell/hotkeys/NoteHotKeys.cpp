#include "shell/hotkeys/NoteHotKeys.h"

#include "capture/source/FrontmostTracker.h"
#include "shell/notices/ShellLog.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString noBundleID = u"(none)"_s;

// Says in the log why it failed. Whoever stops a step may take the notes with it.
QCoro::Task<bool> logged(NoteCaptureFlow& notes, QCoro::Task<bool> saving, std::stop_token stop) {
    const bool isSaved = co_await saving;
    if (!isSaved && !stop.stop_requested())
        qCWarning(shellLog, "Vorq ⌘⇧S note save failed: %s",
                  qUtf8Printable(notes.libraryMessage()));
    co_return isSaved;
}

QCoro::Task<bool> push(NoteCaptureFlow& notes, std::stop_token stop) {
    const bool isPushed = co_await notes.pushAppleNoteDraft(stop);
    if (!isPushed && !stop.stop_requested())
        qCWarning(shellLog, "Vorq ⌘⇧P — no open note draft to push.");
    co_return isPushed;
}

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
    start([sourcePID, bundleID](NoteCaptureFlow& notes, const std::stop_token& stop) {
        return logged(notes, notes.saveNoteFromSelection(sourcePID, bundleID, false, stop), stop);
    });
}

void NoteHotKeys::saveHeldText() {
    start([](NoteCaptureFlow& notes, const std::stop_token& stop) {
        return logged(notes, notes.saveHeldText(stop), stop);
    });
}

void NoteHotKeys::discardHeldText() {
    m_notes.discardHeldText();
    tellAdvice();
}

void NoteHotKeys::start(Step step) {
    // Each press is a task of its own.
    m_task.release();
    m_task.restart([self = QPointer(this), step = std::move(step)](std::stop_token stop) {
        return run(self, step, std::move(stop));
    });
}

QCoro::Task<> NoteHotKeys::run(QPointer<NoteHotKeys> self, Step step, std::stop_token stop) {
    if (!self || stop.stop_requested()) co_return;
    const bool isDone = co_await step(self->m_notes, stop);
    if (!self || stop.stop_requested()) co_return;
    emit self->flashNoteSaveStatus(isDone);
    self->tellAdvice();
}

void NoteHotKeys::tellAdvice() {
    emit adviceChanged({.failure = m_notes.failure(), .holdsText = m_notes.holdsText()});
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
    start(push);
}

} // namespace vorq
