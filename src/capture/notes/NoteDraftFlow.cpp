#include "capture/notes/NoteDraftFlow.h"

#include "capture/placement/SnapshotCapture.h"
#include "capture/selection/CaptureLog.h"
#include "capture/selection/NoteCapture.h"
#include "capture/source/CaptureGate.h"
#include "capture/source/CaptureLogging.h"
#include "capture/source/SourceApplication.h"
#include "support/text/Graphemes.h"

#include <QPointer>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString noIdentifier = u"(none)"_s;

QString named(const QString& application) {
    return application.isEmpty() ? NoteDraftFlow::tr("the application in front") : application;
}

} // namespace

NoteDraftFlow::NoteDraftFlow(const Services& services, QObject* parent)
    : QObject(parent), m_services(services), m_draft(services.notes) {}

QCoro::Task<bool> NoteDraftFlow::saveNoteFromSelection(std::optional<ProcessId> sourcePID,
                                                       QString frontBundleID, bool requireBrowser,
                                                       std::stop_token stop) {
    const QPointer<NoteDraftFlow> self(this);
    const TurnQueue::Turn turn = m_turns.takeTurn();
    const QString bundleID = sourceIdentifier(sourcePID, frontBundleID);
    const QString application = nameOf(sourcePID);
    if (!maySaveFrom(bundleID, application, requireBrowser)) co_return false;
    const CapturedText captured = co_await capture(sourcePID, stop);
    if (!self || stop.stop_requested()) co_return false;
    co_await turn.begins();
    if (!self || stop.stop_requested()) co_return false;
    if (captured.isEmpty()) {
        qCInfo(captureLog, "Vorq note save — empty selection from %s", qUtf8Printable(bundleID));
        m_services.log.appendCaptureDebug("note-save empty from " + bundleID);
        co_return end({}, sentenceOf(captured.miss, application));
    }
    m_held.clear();
    if (captured.isHeldBack) {
        m_held = captured.text;
        m_services.log.appendCaptureDebug("note-save held back from " + bundleID);
        m_heldFailure = tr("What is highlighted in %1 reads like a password or a key, so it was "
                           "not saved.")
                            .arg(named(application));
        co_return end({}, m_heldFailure);
    }
    emit self->captured(captured.text, application);
    const qsizetype characters = graphemeCount(captured.text);
    qCInfo(captureLog, "Vorq note save — captured %lld chars from %s",
           static_cast<long long>(characters), qUtf8Printable(bundleID));
    m_services.log.appendCaptureDebug(
        u"note-save chars=%1 app=%2"_s.arg(QString::number(characters), bundleID));
    const bool isSaved = co_await write(captured.text, stop);
    co_return isSaved;
}

// The identifier of the key press may be missing, or be Vorq's own.
QString NoteDraftFlow::sourceIdentifier(std::optional<ProcessId> sourcePID,
                                        const QString& frontBundleID) const {
    const bool isKnown = !frontBundleID.isEmpty() && frontBundleID != noIdentifier &&
                         frontBundleID != m_services.ownIdentifier;
    if (isKnown) return frontBundleID;
    QString found = m_services.gate.identifierOf(sourcePID);
    if (found.isEmpty()) found = m_services.gate.identifierOfSource(std::nullopt);
    return found.isEmpty() ? noIdentifier : found;
}

QString NoteDraftFlow::nameOf(std::optional<ProcessId> sourcePID) const {
    const auto process = sourcePID ? sourcePID : m_services.gate.frontmostForeignProcess();
    return process ? m_services.gate.applicationName(*process) : QString();
}

bool NoteDraftFlow::maySaveFrom(const QString& bundleID, const QString& application,
                                bool requireBrowser) {
    const bool isBrowser = isAnyBrowser(bundleID);
    if (ownsNativeSaveAs(bundleID) && !isBrowser) {
        qCInfo(captureLog, "Vorq note save skipped — app owns ⌘⇧S: %s", qUtf8Printable(bundleID));
        return end(
            {}, tr("%1 uses the key itself, to save under another name.").arg(named(application)));
    }
    if (requireBrowser && !isBrowser) {
        qCInfo(captureLog, "Vorq note save blocked — not a browser: %s", qUtf8Printable(bundleID));
        return end({}, tr("%1 is no browser.").arg(named(application)));
    }
    if (!m_services.gate.isTrusted()) {
        qCInfo(captureLog, "Vorq note save blocked — Accessibility not trusted.");
        m_services.log.appendCaptureDebug(u"note-save blocked — Accessibility off"_s);
        const QString advice = tr("Enable Text capture in Settings to save highlighted notes.");
        return end(advice, advice);
    }
    return true;
}

QCoro::Task<CapturedText> NoteDraftFlow::capture(std::optional<ProcessId> sourcePID,
                                                 std::stop_token stop) {
    const QPointer<NoteDraftFlow> self(this);
    CapturedText found =
        co_await m_services.capture.captureSelectedTextForNoteSave(sourcePID, stop);
    const CaptureMiss miss = found.miss;
    if (self && found.isEmpty() && sourcePID && !stop.stop_requested())
        found = co_await m_services.capture.captureSelectedTextForNoteSave(std::nullopt, stop);
    if (!self || !found.isEmpty() || stop.stop_requested()) co_return found;
    const SelectionSnapshot snapshot =
        co_await m_services.snapshots.captureSelection(sourcePID, std::nullopt, true, stop);
    found.text = snapshot.text;
    found.isHeldBack = snapshot.isHeldBack;
    found.miss = miss;
    co_return found;
}

QCoro::Task<bool> NoteDraftFlow::write(QString text, std::stop_token stop) {
    const QPointer<NoteDraftFlow> self(this);
    const NoteDraft::Saved saved = co_await m_draft.saveHighlightIntoAppleNotesDraft(text, stop);
    if (!self) co_return saved.has_value();
    if (saved) {
        const bool isOpen = !m_draft.activeAppleNoteDraftID().isEmpty();
        m_services.log.appendCaptureDebug(isOpen ? u"note-save Notes draft ok"_s
                                                 : u"note-save Notes ok"_s);
        end({}, {});
        co_return true;
    }
    qCWarning(captureLog, "Vorq note save — Apple Notes export failed: %s",
              qUtf8Printable(saved.error()));
    m_services.log.appendCaptureDebug("note-save Notes failed: " + saved.error());
    const QString failure = saved.error().isEmpty()
                                ? tr("The notes application did not take the text.")
                                : saved.error();
    co_return end(saved.error(), failure);
}

QCoro::Task<bool> NoteDraftFlow::pushAppleNoteDraft(std::stop_token stop) {
    const QPointer<NoteDraftFlow> self(this);
    const TurnQueue::Turn turn = m_turns.takeTurn();
    co_await turn.begins();
    if (!self || stop.stop_requested()) co_return false;
    const bool isPushed = m_draft.pushAppleNoteDraft();
    end({}, isPushed ? QString() : tr("There is no open note draft to push."));
    co_return isPushed;
}

QCoro::Task<bool> NoteDraftFlow::saveHeldText(std::stop_token stop) {
    const QPointer<NoteDraftFlow> self(this);
    const TurnQueue::Turn turn = m_turns.takeTurn();
    co_await turn.begins();
    if (!self || stop.stop_requested() || m_held.isEmpty()) co_return false;
    const QString text = std::exchange(m_held, QString());
    const bool isSaved = co_await write(text, stop);
    if (self && !isSaved) m_held = text;
    co_return isSaved;
}

void NoteDraftFlow::discardHeldText() {
    m_held.clear();
    if (m_failure == m_heldFailure) m_failure.clear();
}

bool NoteDraftFlow::end(const QString& libraryMessage, const QString& failure) {
    m_failure = failure;
    if (std::exchange(m_libraryMessage, libraryMessage) != libraryMessage)
        emit libraryMessageChanged(libraryMessage);
    return false;
}

} // namespace vorq
