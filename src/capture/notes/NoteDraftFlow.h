#pragma once

#include "capture/notes/NoteCaptureFlow.h"
#include "capture/notes/NoteDraft.h"
#include "capture/selection/CapturedText.h"
#include "support/async/TurnQueue.h"

#include <QObject>

namespace vorq {

class CaptureGate;
class CaptureLog;
class NoteCapture;
class SnapshotCapture;

/// The note keys from the press to the user's notes application. Captures run at once, each of what
/// is highlighted when its key is pressed; texts are saved in the order of the presses, so that two
/// quick ones share a note, and one that seals comes after what was captured before it. Main thread
/// only.
class NoteDraftFlow final : public QObject, public NoteCaptureFlow {
    Q_OBJECT

  public:
    struct Services {
        NoteCapture& capture;
        SnapshotCapture& snapshots;
        const CaptureGate& gate;
        CaptureLog& log;
        NotesBridge& notes;
        QString ownIdentifier; ///< of Vorq's own application
    };

    /// The services must outlive this object.
    explicit NoteDraftFlow(const Services& services, QObject* parent = nullptr);

    [[nodiscard]] bool isAvailable() const override { return true; }
    QCoro::Task<bool> saveNoteFromSelection(std::optional<ProcessId> sourcePID,
                                            QString frontBundleID, bool requireBrowser,
                                            std::stop_token stop) override;
    QCoro::Task<bool> pushAppleNoteDraft(std::stop_token stop) override;
    [[nodiscard]] QString libraryMessage() const override { return m_libraryMessage; }
    [[nodiscard]] QString failure() const override { return m_failure; }
    [[nodiscard]] bool holdsText() const override { return !m_held.isEmpty(); }
    QCoro::Task<bool> saveHeldText(std::stop_token stop) override;
    void discardHeldText() override;

    [[nodiscard]] const NoteDraft& draft() const { return m_draft; }

  signals:
    /// A text was captured, which is not held back. The name of its application is "" if unknown.
    void captured(const QString& text, const QString& application);
    void libraryMessageChanged(const QString& message);

  private:
    [[nodiscard]] QString sourceIdentifier(std::optional<ProcessId> sourcePID,
                                           const QString& frontBundleID) const;
    [[nodiscard]] QString nameOf(std::optional<ProcessId> sourcePID) const;
    [[nodiscard]] bool maySaveFrom(const QString& bundleID, const QString& application,
                                   bool requireBrowser);
    QCoro::Task<CapturedText> capture(std::optional<ProcessId> sourcePID, std::stop_token stop);
    QCoro::Task<bool> write(QString text, std::stop_token stop);
    bool end(const QString& libraryMessage, const QString& failure);

    Services m_services;
    NoteDraft m_draft;
    TurnQueue m_turns;
    QString m_held;
    QString m_heldFailure; // why it was not saved
    QString m_libraryMessage;
    QString m_failure;
};

} // namespace vorq
