#include "library/HubAIChat.h"

#include "library/RecordJson.h"
#include "support/FollowUpJson.h"

namespace vorq {

using strict_json::Element;
using strict_json::Object;
using strict_json::readIfPresent;
using strict_json::readRequired;

static bool read(Element element, HubQuizQuestion& question) {
    Object object;
    return element.get(object) == simdjson::SUCCESS &&
           readRequired(object, "prompt", question.prompt) &&
           readRequired(object, "options", question.options) &&
           readRequired(object, "answerIndex", question.answerIndex) &&
           readIfPresent(object, "explanation", question.explanation);
}

static bool read(Element element, HubQuizData& quiz) {
    Object object;
    return element.get(object) == simdjson::SUCCESS &&
           readRequired(object, "primer", quiz.primer) &&
           readRequired(object, "questions", quiz.questions) &&
           readIfPresent(object, "sourceNoteIDs", quiz.sourceNoteIDs);
}

static bool read(Element element, HubAIMessage& message) {
    Object object;
    return element.get(object) == simdjson::SUCCESS && readRequired(object, "id", message.id) &&
           readRequired(object, "role", message.role) &&
           readRequired(object, "text", message.text) &&
           readIfPresent(object, "noteClips", message.noteClips) &&
           readIfPresent(object, "fileClips", message.fileClips) &&
           readRequired(object, "createdAt", message.createdAt) &&
           readIfPresent(object, "quiz", message.quiz) &&
           readIfPresent(object, "followUp", message.followUp);
}

static bool read(Element element, HubAIChat& chat) {
    Object object;
    return element.get(object) == simdjson::SUCCESS && readRequired(object, "id", chat.id) &&
           readRequired(object, "title", chat.title) &&
           readIfPresent(object, "messages", chat.messages) &&
           readIfPresent(object, "sourceNoteIDs", chat.sourceNoteIDs) &&
           readIfPresent(object, "isSaved", chat.isSaved) &&
           readRequired(object, "createdAt", chat.createdAt) &&
           readRequired(object, "updatedAt", chat.updatedAt);
}

static void texts(JsonWriter& writer, QStringView key, const std::vector<QString>& held) {
    writer.key(key);
    list(writer, held, [&](const QString& text) { writer.value(text); });
}

static void identities(JsonWriter& writer, QStringView key, const std::vector<QUuid>& ids) {
    writer.key(key);
    list(writer, ids, [&](const QUuid& id) { value(writer, id); });
}

static void write(JsonWriter& writer, const VorqFollowUp& followUp) {
    writer.beginObject();
    texts(writer, u"labels", followUp.labels);
    writer.member(u"question", followUp.question);
    writer.endObject();
}

static void write(JsonWriter& writer, const HubQuizQuestion& question) {
    writer.beginObject();
    writer.member(u"answerIndex", question.answerIndex);
    writer.member(u"explanation", question.explanation);
    texts(writer, u"options", question.options);
    writer.member(u"prompt", question.prompt);
    writer.endObject();
}

static void write(JsonWriter& writer, const HubQuizData& quiz) {
    writer.beginObject();
    writer.member(u"primer", quiz.primer);
    writer.key(u"questions");
    list(writer, quiz.questions, [&](const HubQuizQuestion& question) { write(writer, question); });
    identities(writer, u"sourceNoteIDs", quiz.sourceNoteIDs);
    writer.endObject();
}

static void write(JsonWriter& writer, const HubAIMessage& message) {
    writer.beginObject();
    member(writer, u"createdAt", message.createdAt);
    texts(writer, u"fileClips", message.fileClips);
    if (message.followUp) {
        writer.key(u"followUp");
        write(writer, *message.followUp);
    }
    member(writer, u"id", message.id);
    texts(writer, u"noteClips", message.noteClips);
    if (message.quiz) {
        writer.key(u"quiz");
        write(writer, *message.quiz);
    }
    writer.member(u"role", message.role);
    writer.member(u"text", message.text);
    writer.endObject();
}

static void write(JsonWriter& writer, const HubAIChat& chat) {
    writer.beginObject();
    member(writer, u"createdAt", chat.createdAt);
    member(writer, u"id", chat.id);
    writer.member(u"isSaved", chat.isSaved);
    writer.key(u"messages");
    list(writer, chat.messages, [&](const HubAIMessage& message) { write(writer, message); });
    identities(writer, u"sourceNoteIDs", chat.sourceNoteIDs);
    writer.member(u"title", chat.title);
    member(writer, u"updatedAt", chat.updatedAt);
    writer.endObject();
}

std::optional<std::vector<HubAIChat>> decodeHubAIChats(QByteArrayView json) {
    return strict_json::decodeDocument<std::vector<HubAIChat>>(json);
}

QByteArray encode(const std::vector<HubAIChat>& chats) {
    return encodedFile(chats,
                       [](JsonWriter& writer, const HubAIChat& chat) { write(writer, chat); });
}

} // namespace vorq
