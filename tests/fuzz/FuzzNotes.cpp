// Any bytes as a reply that becomes a note, and as what the notes applications answer.

#include "capture/notes/AppleNotesExport.h"
#include "library/notes/VorqNoteImport.h"
#include "library/rtf/RtfReader.h"
#include "platform/linux/notes/GnoteText.h"
#include "platform/portable/MarkdownFolderBridge.h"
#include "support/text/Text.h"

#include <cstdint>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

using namespace vorq;

void require(bool holds) {
    if (!holds) std::abort();
}

void checkPayload(const std::optional<VorqNoteImport::Payload>& note) {
    require(note && note->rtf && !note->title.isEmpty());
    const std::optional<NoteRichText> rich = readRtf(*note->rtf);
    require(rich && rich->text() == note->plain);
}

void checkImport(const QString& text) {
    const std::optional<VorqNoteImport::Payload> note = VorqNoteImport::structure(text);
    require(note.has_value() == !trimmed(text).isEmpty());
    if (!note) return;
    checkPayload(note);
    checkPayload(VorqNoteImport::append(text, note->plain, note->rtf));
    checkPayload(VorqNoteImport::append(text, text, std::nullopt));
}

void checkAnswers(const QString& text) {
    for (const AppleNoteSummary& note : applenotes::parseNotesList(text))
        require(!note.id.isEmpty() && !note.title.isEmpty());
    const std::optional<QString> clean = applenotes::cleanNoteHTML(text);
    require(!clean || (!clean->isEmpty() && trimmed(*clean).size() == clean->size()));
    require(!applenotes::notesHTML(text).contains(u'\n'));
    require(!applenotes::createNoteScript(text, text).contains(u'\r'));
}

void checkStorable(const QString& text) {
    const QString empty = u"<note-content version=\"0.1\"/>"_s;
    const std::optional<QString> xml = gnote::withAppended(empty, text);
    require(xml && gnote::withAppended(*xml, text));
    (void)gnote::withAppended(text, text);
    const QString name = MarkdownFolderBridge::fileNameFor(text);
    require(!name.isEmpty() && !name.contains(u'/') && !name.startsWith(u'.') &&
            !name.contains(QChar(u'\0')) && name.toUtf8().size() <= 201);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    checkImport(text);
    checkAnswers(text);
    checkStorable(text);
    return 0;
}
