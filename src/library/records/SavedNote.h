#pragma once

#include "library/json/JsonFile.h"
#include "library/json/RecordHook.h"
#include "library/records/HubArea.h"
#include "support/Date.h"
#include "support/json/JsonWriter.h"

#include <QByteArray>
#include <QString>
#include <QUuid>

#include <optional>
#include <vector>

namespace vorq {

/// A review card of a note.
struct Flashcard {
    QUuid id;
    QString front;
    QString back;

    bool operator==(const Flashcard&) const = default;
};

/// A note of the user: the seed it was made from and the body that the user sees and edits.
struct SavedNote {
    QUuid id;
    QString text;
    QString thoughts;
    std::optional<QByteArray> thoughtsRTF; ///< the rich form of the body
    std::vector<Flashcard> flashcards;
    HubArea area = HubArea::Personal;
    Date createdAt;

    bool operator==(const SavedNote&) const = default;
};

/// All notes of a file. Nothing if any of it does not fit; what older files lack has its default.
[[nodiscard]] std::optional<std::vector<SavedNote>>
decodeSavedNotes(JsonFile file, const RecordHook<SavedNote>& hook = {});
[[nodiscard]] QByteArray encode(const std::vector<SavedNote>& notes);
/// The same piece by piece.
void encode(const std::vector<SavedNote>& notes, const JsonWriter::Sink& put);

/// What the note is read as: its body if there is one, else its seed; trimmed.
[[nodiscard]] QString studySource(const SavedNote& note);

/// The first line as plain text, shortened; "New Note" if there is none.
[[nodiscard]] QString displayTitle(const SavedNote& note);

/// What follows the first line, in one line and shortened; nothing if that is blank.
[[nodiscard]] std::optional<QString> noteSnippet(const SavedNote& note);

} // namespace vorq
