#pragma once

#include "platform/NotesBridge.h"

#include <QObject>

namespace vorq {

/// The note that captured texts are added to until it is sealed. It lies in the user's notes
/// application; here is only its identity, which ends with the program. Main thread only.
///
/// One save after the other: whoever begins one waits for its end before the next, or before
/// sealing.
class NoteDraft final : public QObject {
    Q_OBJECT

  public:
    /// The error is a sentence, "" if there is nothing to say but that it failed.
    using Saved = std::expected<void, QString>;

    /// The bridge must outlive the draft.
    explicit NoteDraft(NotesBridge& notes, QObject* parent = nullptr)
        : QObject(parent), m_notes(notes) {}

    /// "" while no draft is open.
    [[nodiscard]] const QString& activeAppleNoteDraftID() const { return m_id; }

    /// Adds the text to the draft; makes a new one if none is open or this one is gone.
    [[nodiscard]] QCoro::Task<Saved> saveHighlightIntoAppleNotesDraft(QString text,
                                                                      std::stop_token stop);

    /// Seals the draft: the next text begins a new note. False if none is open.
    bool pushAppleNoteDraft();

  private:
    NotesBridge& m_notes;
    QString m_id;
};

} // namespace vorq
