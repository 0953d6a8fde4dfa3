#include "library/records/SavedNote.h"

#include "library/records/HubAreaJson.h"
#include "library/records/NoteTitle.h"
#include "library/records/StudySource.h"
#include "rendering/AssistantReplyDocument.h"
#include "support/text/Text.h"

using namespace Qt::StringLiterals;

namespace vorq {

static constexpr qsizetype longestSnippet = 160;

template<>
inline constexpr auto fieldsOf<Flashcard> = std::to_array<Field>({
    required<&Flashcard::back>("back"),
    required<&Flashcard::front>("front"),
    required<&Flashcard::id>("id"),
});

template<>
inline constexpr auto fieldsOf<SavedNote> = std::to_array<Field>({
    defaulted<&SavedNote::area>("area"),
    required<&SavedNote::createdAt>("createdAt"),
    defaulted<&SavedNote::flashcards>("flashcards"),
    required<&SavedNote::id>("id"),
    required<&SavedNote::text>("text"),
    defaulted<&SavedNote::thoughts>("thoughts"),
    defaulted<&SavedNote::thoughtsRTF>("thoughtsRTF"),
});

std::optional<std::vector<SavedNote>> decodeSavedNotes(JsonFile file,
                                                       const RecordHook<SavedNote>& hook) {
    return decodedFile<SavedNote>(file, {}, hook);
}

QByteArray encode(const std::vector<SavedNote>& notes) {
    return encodedFile(notes);
}

void encode(const std::vector<SavedNote>& notes, const JsonWriter::Sink& put) {
    encodeFile(notes, put);
}

QString studySource(const SavedNote& note) {
    return studySource(note.text, note.thoughts);
}

QString displayTitle(const SavedNote& note) {
    const QString source = studySource(note);
    const QString plain = AssistantReplyDocument::inlinePlain(firstLine(source));
    const QStringView title = withoutLeadingBullets(trimmed(plain));
    if (title.isEmpty()) return u"New Note"_s;
    return shortened(title, longestNoteTitle);
}

std::optional<QString> noteSnippet(const SavedNote& note) {
    const QString source = studySource(note);
    const std::vector<QStringView> pieces = splitAtNewlines(source);
    QString rest;
    for (std::size_t index = 1; index < pieces.size(); ++index)
        rest.append(pieces[index]).append(u' ');
    const QString snippet = trimmed(rest).toString();
    if (snippet.isEmpty()) return std::nullopt;
    return shortened(snippet, longestSnippet);
}

} // namespace vorq
