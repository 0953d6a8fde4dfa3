#include "library/SavedNote.h"

#include "library/HubAreaJson.h"
#include "library/StudySource.h"
#include "rendering/AssistantReplyDocument.h"
#include "support/Characters.h"
#include "support/Text.h"

namespace vorq {

using strict_json::Element;
using strict_json::Object;
using strict_json::readIfPresent;
using strict_json::readRequired;

namespace {

constexpr qsizetype longestTitle = 72;
constexpr qsizetype longestSnippet = 160;
constexpr QChar bullet = u'•';

QString shortened(const QString& text, qsizetype longest) {
    if (!graphemeCountAtLeast(text, longest + 1)) return text;
    return graphemePrefix(text, longest).toString() + u'…';
}

QStringView withoutBullets(QStringView text) {
    if (firstCharacter(text) != bullet) return text;
    while (!text.isEmpty()) {
        const QStringView character = firstCharacter(text);
        if (character != bullet && !isWhitespaceCharacter(character)) break;
        text = text.sliced(character.size());
    }
    return text;
}

} // namespace

static bool read(Element element, Flashcard& card) {
    Object object;
    return element.get(object) == simdjson::SUCCESS && readRequired(object, "id", card.id) &&
           readRequired(object, "front", card.front) && readRequired(object, "back", card.back);
}

static bool read(Element element, SavedNote& note) {
    Object object;
    return element.get(object) == simdjson::SUCCESS && readRequired(object, "id", note.id) &&
           readRequired(object, "text", note.text) &&
           readIfPresent(object, "thoughts", note.thoughts) &&
           readIfPresent(object, "thoughtsRTF", note.thoughtsRTF) &&
           readIfPresent(object, "flashcards", note.flashcards) &&
           readIfPresent(object, "area", note.area) &&
           readRequired(object, "createdAt", note.createdAt);
}

static void write(JsonWriter& writer, const Flashcard& card) {
    writer.beginObject();
    writer.member(u"back", card.back);
    writer.member(u"front", card.front);
    member(writer, u"id", card.id);
    writer.endObject();
}

static void write(JsonWriter& writer, const SavedNote& note) {
    writer.beginObject();
    member(writer, u"area", note.area);
    member(writer, u"createdAt", note.createdAt);
    writer.key(u"flashcards");
    list(writer, note.flashcards, [&](const Flashcard& card) { write(writer, card); });
    member(writer, u"id", note.id);
    writer.member(u"text", note.text);
    writer.member(u"thoughts", note.thoughts);
    memberIfPresent(writer, u"thoughtsRTF", note.thoughtsRTF);
    writer.endObject();
}

std::optional<std::vector<SavedNote>> decodeSavedNotes(QByteArrayView json) {
    return strict_json::decodeDocument<std::vector<SavedNote>>(json);
}

QByteArray encode(const std::vector<SavedNote>& notes) {
    return encodedFile(notes,
                       [](JsonWriter& writer, const SavedNote& note) { write(writer, note); });
}

QString studySource(const SavedNote& note) {
    return studySource(note.text, note.thoughts);
}

QString displayTitle(const SavedNote& note) {
    const QString source = studySource(note);
    const QString plain = AssistantReplyDocument::inlinePlain(firstLine(source));
    const QStringView title = withoutBullets(trimmed(plain));
    if (title.isEmpty()) return QStringLiteral("New Note");
    return shortened(title.toString(), longestTitle);
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
