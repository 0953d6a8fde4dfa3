#include "library/notes/NoteUpdate.h"

#include "support/text/Characters.h"
#include "support/text/Text.h"

namespace vorq {
namespace {

// Neither list markers nor emphasis, which change when Markdown becomes rich text.
QString lettersAndNumbers(QStringView text) {
    QString kept;
    for (const QChar unit : text)
        if (unit.isLetterOrNumber() || unit.isSurrogate()) kept += unit;
    return kept;
}

// Whether every line of the former text stands in the new one, in the same order.
bool holdsLines(const QString& text, QStringView former) {
    const QString held = lettersAndNumbers(text);
    qsizetype from = 0;
    for (const QStringView line : splitAtNewlines(former)) {
        const QString wanted = lettersAndNumbers(line);
        if (wanted.isEmpty()) continue;
        const qsizetype found = held.indexOf(wanted, from);
        if (found < 0) return false;
        from = found + wanted.size();
    }
    return true;
}

std::optional<VorqNoteImport::Payload>
replacedOrAppended(const SavedNote& note, QStringView loadedBody, QStringView reply) {
    if (loadedBody.isEmpty() || containsCharacters(reply, loadedBody))
        return VorqNoteImport::structure(reply);
    return VorqNoteImport::append(reply, loadedBody, note.thoughtsRTF);
}

} // namespace

std::optional<VorqNoteImport::Payload> withReply(const SavedNote& note, QStringView loadedBody,
                                                 QStringView reply) {
    const QString former = studySource(note);
    auto updated = replacedOrAppended(note, loadedBody, reply);
    if (updated && !holdsLines(updated->plain, former))
        updated = VorqNoteImport::append(reply, former, note.thoughtsRTF);
    // The rich text may be older than the plain text.
    if (updated && !holdsLines(updated->plain, former))
        updated = VorqNoteImport::append(reply, former, std::nullopt);
    return updated;
}

} // namespace vorq
