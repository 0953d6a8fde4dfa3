#include "conformance/Ops.h"
#include "library/notes/VorqNoteImport.h"
#include "library/records/DraftTitle.h"
#include "library/records/HubAIChat.h"
#include "library/records/HubTask.h"
#include "library/records/HubTracker.h"
#include "library/records/SavedNote.h"
#include "panel/PanelHistory.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace vorq::conformance {
namespace {

QJsonValue note(const QJsonObject& in) {
    SavedNote note;
    note.text = stringOf(in, "text");
    note.thoughts = stringOf(in, "thoughts");
    const std::optional<QString> snippet = noteSnippet(note);
    return QJsonObject{{"studySource", studySource(note)},
                       {"displayTitle", displayTitle(note)},
                       {"snippet", snippet ? QJsonValue(*snippet) : QJsonValue::Null}};
}

QJsonValue savedChat(const QJsonObject& in) {
    std::vector<VorqMessage> messages;
    for (const QJsonValue& value : arrayOf(in, "messages")) {
        const QJsonObject object = value.toObject();
        VorqMessage& message = messages.emplace_back();
        message.role =
            stringOf(object, "role") == u"assistant" ? MessageRole::Assistant : MessageRole::User;
        message.text = stringOf(object, "text");
        message.isWorking = object["isWorking"].toBool();
        message.isTyping = object["isTyping"].toBool();
    }
    const std::optional<SavedChat> chat = vorq::savedChat(messages, Date());
    if (!chat) return QJsonValue::Null;
    QJsonArray kept;
    for (const SavedChatMessage& message : chat->messages)
        kept += QJsonObject{{"role", message.role}, {"text", message.text}};
    return QJsonObject{{"title", chat->title}, {"messages", kept}};
}

template<typename Record>
QJsonValue recoded(const std::optional<std::vector<Record>>& decoded) {
    const std::vector<Record> records = decoded.value_or(std::vector<Record>());
    return QJsonObject{{"count", static_cast<qint64>(records.size())},
                       {"content", QString::fromUtf8(encode(records))}};
}

QJsonValue libraryRecode(const QJsonObject& in) {
    const QString file = stringOf(in, "file");
    const QByteArray content = stringOf(in, "content").toUtf8();
    if (file == u"saved-notes.json") return recoded(decodeSavedNotes(content));
    if (file == u"saved-chats.json") return recoded(decodeSavedChats(content));
    if (file == u"hub-ai-chats.json") return recoded(decodeHubAIChats(content));
    if (file == u"hub-tasks.json") return recoded(decodeHubTasks(content));
    if (file == u"hub-task-columns.json") return recoded(decodeHubTaskColumns(content, Date()));
    if (file == u"hub-trackers.json") return recoded(decodeHubTrackers(content, Date()));
    throw MalformedInput("unknown file");
}

QJsonValue migrated(const QJsonObject& in) {
    auto columns = decodeHubTaskColumns(QJsonDocument(arrayOf(in, "columns")).toJson(), Date());
    auto tasks = decodeHubTasks(QJsonDocument(arrayOf(in, "tasks")).toJson());
    if (!columns || !tasks) throw MalformedInput("not the records of a board");
    const HubTaskBoard board = migrateHubTasks(*std::move(tasks), *std::move(columns), Date());

    const QJsonArray written = parsed(encode(board.columns)).toArray();
    QJsonArray outColumns;
    std::map<QUuid, QString> names;
    for (qsizetype index = 0; index < written.size(); ++index) {
        const QJsonObject column = written[index].toObject();
        outColumns += QJsonObject{
            {"name", column["name"]}, {"icon", column["icon"]}, {"color", column["color"]}};
        names.emplace(QUuid(column["id"].toString()), column["name"].toString());
    }
    QJsonArray outTasks;
    for (const HubTask& task : board.tasks)
        outTasks += QJsonObject{{"title", task.title},
                                {"column", names.at(task.columnID.value())},
                                {"order", task.orderInColumn}};
    return QJsonObject{{"columns", outColumns}, {"tasks", outTasks}};
}

QJsonValue jsonOf(const std::optional<VorqNoteImport::Payload>& payload) {
    if (!payload) return QJsonValue::Null;
    return QJsonObject{{"title", payload->title}, {"plain", payload->plain}};
}

} // namespace

void addLibraryOps(Ops& ops) {
    ops["note"] = note;
    ops["savedChat"] = savedChat;
    ops["libraryRecode"] = libraryRecode;
    ops["migrateHubTasks"] = migrated;
    ops["structure"] = [](const QJsonObject& in) {
        return jsonOf(VorqNoteImport::structure(stringOf(in, "reply")));
    };
    ops["appendNote"] = [](const QJsonObject& in) {
        return jsonOf(VorqNoteImport::append(stringOf(in, "reply"), stringOf(in, "existingPlain"),
                                             std::nullopt));
    };
    ops["needsMigration"] = [](const QJsonObject& in) {
        return VorqNoteImport::needsMigration(stringOf(in, "text"));
    };
    ops["titleFrom"] = [](const QJsonObject& in) {
        return VorqNoteImport::titleFrom(stringOf(in, "text"));
    };
    ops["draftTitle"] = [](const QJsonObject& in) -> QJsonValue {
        return draftTitle(stringOf(in, "text"));
    };
}

} // namespace vorq::conformance
