#include "app/cli/LibraryCommands.h"

#include "app/cli/LibraryJson.h"
#include "app/cli/Terminal.h"
#include "library/notes/NoteMarkdown.h"
#include "library/notes/VorqNoteImport.h"
#include "library/richtext/NoteTypography.h"
#include "library/store/LibraryFile.h"
#include "platform/Clock.h"
#include "support/files/DurableFile.h"
#include "support/text/Text.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr std::chrono::seconds lockPatience{10};

// The one record whose id is this, or begins with it.
template<typename Record, typename IdOf>
std::expected<Record, QString> recordOf(const std::vector<Record>& records, const QString& asked,
                                        IdOf idOf, const QString& kind) {
    const QString start = asked.toUpper();
    const Record* found = nullptr;
    for (const Record& record : records) {
        if (start.isEmpty() || !idText(idOf(record)).startsWith(start)) continue;
        if (found && idOf(*found) != idOf(record))
            return std::unexpected(
                u"More than one %1 has an id that begins with %2."_s.arg(kind, asked));
        if (!found) found = &record;
    }
    if (!found) return std::unexpected(u"There is no %1 %2."_s.arg(kind, asked));
    return *found;
}

QString listLine(const QUuid& id, Date createdAt, const QString& kind, qsizetype kindWidth,
                 const QString& title) {
    return u"%1  %2  %3  %4\n"_s.arg(idText(id), QString::fromLatin1(isoDate(createdAt)),
                                     kind.leftJustified(kindWidth), title.simplified());
}

std::optional<VorqNoteImport::Payload> contentOf(const SaveNote& command, const QString& text) {
    const QString title = command.title.simplified();
    if (!command.isPlain)
        return VorqNoteImport::structure(title.isEmpty() ? text : u"# %1\n\n"_s.arg(title) + text);
    const QString body = trimmed(text).toString();
    if (body.isEmpty() && title.isEmpty()) return std::nullopt;
    const QString plain = title.isEmpty() ? body : title + u'\n' + body;
    return VorqNoteImport::Payload{VorqNoteImport::titleFrom(plain), plain, std::nullopt};
}

std::optional<QByteArray> rtfOf(const SavedNote& note) {
    if (note.thoughtsRTF) return note.thoughtsRTF;
    const QString body = studySource(note);
    return VorqNoteImport::rtfData(VorqNoteImport::needsMigration(body)
                                       ? VorqNoteImport::attributedDocument(body)
                                       : NoteTypography::document(body));
}

// What is no file, such as a pipe or a device, cannot be replaced by one.
bool isWrittenInto(const QString& path) {
    const QFileInfo place(path);
    return place.exists() && !place.isFile() && !place.isDir();
}

template<typename Outcome>
std::optional<QString> failureOf(const Outcome& outcome) {
    return outcome ? std::nullopt : std::optional(outcome.error());
}

std::expected<void, QString> writeInto(const QString& path, const QByteArray& content) {
    QFile device(path);
    if (device.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
        device.write(content) == content.size())
        return {};
    return std::unexpected(device.errorString());
}

std::expected<void, QString> writeFile(const QString& path, const QByteArray& content) {
    const std::optional<QString> failure = isWrittenInto(path)
                                               ? failureOf(writeInto(path, content))
                                               : failureOf(replaceFile(path, content, sharedFile));
    if (!failure) return {};
    return std::unexpected(u"%1 could not be written: %2."_s.arg(path, *failure));
}

} // namespace

LibraryCommands::LibraryCommands(const QString& applicationSupportFolder, Clock& clock,
                                 Terminal& terminal)
    : m_store(applicationSupportFolder, lockPatience),
      m_reader(m_store),
      m_clock(clock),
      m_terminal(terminal) {}

int LibraryCommands::run(const LibraryCommand& command) {
    return std::visit([this](const auto& asked) { return run(asked); }, command);
}

int LibraryCommands::run(const ListNotes& command) {
    auto notes = m_reader.notes();
    if (!notes) return fail(notes.error());
    if (command.area)
        std::erase_if(*notes,
                      [&command](const SavedNote& note) { return note.area != command.area; });
    if (command.asJson) return print(jsonOf(*notes));
    constexpr qsizetype widest = 8;
    QString lines;
    for (const SavedNote& note : *notes)
        lines +=
            listLine(note.id, note.createdAt, rawString(note.area), widest, displayTitle(note));
    return print(lines.toUtf8());
}

int LibraryCommands::run(const ShowNote& command) {
    const auto shown = note(command.id);
    if (!shown) return fail(shown.error());
    return print(command.asJson ? jsonOf(*shown) : notePlainText(*shown).toUtf8());
}

int LibraryCommands::run(const SaveNote& command) {
    QString text = command.text;
    if (text.isEmpty()) {
        const auto piped = readPipedInput(u"a note can hold"_s);
        if (!piped) return fail(piped.error());
        text = *piped;
    }
    const auto content = trimmed(text).isEmpty() ? std::nullopt : contentOf(command, text);
    if (!content)
        return fail(u"There is nothing to save: give a text, or one on standard "
                    "input."_s);
    SavedNote made;
    made.id = QUuid::createUuid();
    made.text = content->plain;
    made.thoughts = content->plain;
    made.thoughtsRTF = content->rtf;
    made.area = command.area;
    made.createdAt = dateOf(m_clock.wallTime());
    if (const auto kept = keep(made); !kept) return fail(kept.error());
    // It is saved, whether or not that can be told.
    if (!m_terminal.print(idText(made.id).toUtf8() + '\n'))
        m_terminal.complain(u"The note is saved as %1."_s.arg(idText(made.id)));
    return 0;
}

std::expected<void, QString> LibraryCommands::keep(const SavedNote& made) const {
    const auto failure = [this](const QString& reason) {
        return std::unexpected(
            u"The note could not be saved in %1: %2."_s.arg(m_store.folder(), reason));
    };
    LibraryFile<SavedNote> file(m_store);
    std::vector<SavedNote> notes = file.load({});
    // A list that does not read is not to be replaced by this one note.
    if (const auto& unread = file.unread(); unread && unread->kind != ReadFailure::Kind::Missing) {
        if (unread->kind == ReadFailure::Kind::Unreadable) return failure(unread->reason);
        return std::unexpected(sentenceOn(m_store.path<SavedNote>(), *unread));
    }
    notes.insert(notes.begin(), made);
    file.save(notes);
    if (file.unsaved()) return failure(file.unsaved()->reason);
    return {};
}

int LibraryCommands::run(const ExportNote& command) {
    const auto exported = note(command.id);
    if (!exported) return fail(exported.error());
    QByteArray content;
    if (command.format == NoteFormat::Rtf) {
        const auto rtf = rtfOf(*exported);
        if (!rtf) return fail(u"The note is empty."_s);
        content = *rtf;
    } else {
        content = (command.format == NoteFormat::Plain ? notePlainText(*exported)
                                                       : noteMarkdown(*exported))
                      .toUtf8();
    }
    if (command.output.isEmpty()) return print(content);
    const auto written = writeFile(command.output, content);
    return written ? 0 : fail(written.error());
}

int LibraryCommands::run(const ListChats& command) {
    const auto chats = m_reader.chats();
    if (!chats) return fail(chats.error());
    if (command.asJson) return print(jsonOf(*chats));
    constexpr qsizetype widest = 5;
    QString lines;
    for (const KeptChat& kept : *chats)
        lines += listLine(kept.chat.id, kept.updatedAt, kept.isOfHub ? u"hub"_s : u"panel"_s,
                          widest, kept.chat.title);
    return print(lines.toUtf8());
}

int LibraryCommands::run(const ShowChat& command) {
    const auto shown = chat(command.id);
    if (!shown) return fail(shown.error());
    if (command.asJson) return print(jsonOf(*shown));
    QString text = u"# %1\n"_s.arg(shown->chat.title.simplified());
    for (const SavedChatMessage& message : shown->chat.messages) {
        const bool isReply = message.role == u"assistant";
        text += isReply ? u"\n## Vorq\n\n"_s : u"\n## You\n\n"_s;
        text += trimmed(message.text).toString() + u'\n';
    }
    return print(text.toUtf8());
}

std::expected<SavedNote, QString> LibraryCommands::note(const QString& id) const {
    const auto notes = m_reader.notes();
    if (!notes) return std::unexpected(notes.error());
    return recordOf(*notes, id, [](const SavedNote& note) { return note.id; }, u"note"_s);
}

std::expected<KeptChat, QString> LibraryCommands::chat(const QString& id) const {
    const auto chats = m_reader.chats();
    if (!chats) return std::unexpected(chats.error());
    return recordOf(*chats, id, [](const KeptChat& kept) { return kept.chat.id; }, u"chat"_s);
}

int LibraryCommands::print(const QByteArray& bytes) {
    return m_terminal.print(bytes) ? 0 : 1;
}

int LibraryCommands::fail(const QString& sentence) {
    m_terminal.complain(sentence);
    return 1;
}

} // namespace vorq
