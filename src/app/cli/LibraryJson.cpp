#include "app/cli/LibraryJson.h"

#include "support/json/JsonWriter.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

void writeHead(JsonWriter& writer, const SavedNote& note) {
    writer.member(u"id", idText(note.id));
    writer.member(u"title", displayTitle(note));
    writer.member(u"area", rawString(note.area));
    writer.member(u"createdAt", QString::fromLatin1(isoDate(note.createdAt)));
}

void writeHead(JsonWriter& writer, const KeptChat& kept) {
    writer.member(u"id", idText(kept.chat.id));
    writer.member(u"title", kept.chat.title);
    writer.member(u"place", kept.isOfHub ? u"hub"_s : u"panel"_s);
    writer.member(u"createdAt", QString::fromLatin1(isoDate(kept.chat.createdAt)));
    writer.member(u"updatedAt", QString::fromLatin1(isoDate(kept.updatedAt)));
}

} // namespace

QString idText(const QUuid& id) {
    return id.toString(QUuid::WithoutBraces).toUpper();
}

QByteArray jsonOf(const std::vector<SavedNote>& notes) {
    JsonWriter writer(JsonWriter::Style::Indented);
    writer.beginArray();
    for (const SavedNote& note : notes) {
        writer.beginObject();
        writeHead(writer, note);
        writer.member(u"flashcardCount", static_cast<qint64>(note.flashcards.size()));
        writer.endObject();
    }
    writer.endArray();
    return writer.take() + '\n';
}

QByteArray jsonOf(const SavedNote& note) {
    JsonWriter writer(JsonWriter::Style::Indented);
    writer.beginObject();
    writeHead(writer, note);
    writer.member(u"text", note.text);
    writer.member(u"thoughts", note.thoughts);
    writer.member(u"hasRichText", note.thoughtsRTF.has_value());
    writer.key(u"flashcards");
    writer.beginArray();
    for (const Flashcard& card : note.flashcards) {
        writer.beginObject();
        writer.member(u"front", card.front);
        writer.member(u"back", card.back);
        writer.endObject();
    }
    writer.endArray();
    writer.endObject();
    return writer.take() + '\n';
}

QByteArray jsonOf(const std::vector<KeptChat>& chats) {
    JsonWriter writer(JsonWriter::Style::Indented);
    writer.beginArray();
    for (const KeptChat& kept : chats) {
        writer.beginObject();
        writeHead(writer, kept);
        writer.member(u"messageCount", static_cast<qint64>(kept.chat.messages.size()));
        writer.endObject();
    }
    writer.endArray();
    return writer.take() + '\n';
}

QByteArray jsonOf(const KeptChat& kept) {
    JsonWriter writer(JsonWriter::Style::Indented);
    writer.beginObject();
    writeHead(writer, kept);
    writer.key(u"messages");
    writer.beginArray();
    for (const SavedChatMessage& message : kept.chat.messages) {
        writer.beginObject();
        writer.member(u"role", message.role);
        if (message.sentFrom) writer.member(u"sentFrom", *message.sentFrom);
        if (message.sentText) writer.member(u"sentText", *message.sentText);
        writer.member(u"text", message.text);
        writer.endObject();
    }
    writer.endArray();
    writer.endObject();
    return writer.take() + '\n';
}

} // namespace vorq
