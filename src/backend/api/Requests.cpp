#include "backend/api/Requests.h"

#include "support/json/JsonWriter.h"
#include "support/text/Text.h"

namespace vorq {

static void writeModel(const std::optional<QString>& model, JsonWriter& writer) {
    if (!model) return;
    const QStringView id = trimmed(*model);
    if (!id.isEmpty()) writer.member(u"preferredModel", id);
}

std::chrono::seconds PromptRequest::timeout() const {
    return std::chrono::seconds(stream && deepResearch ? 90 : 60);
}

QByteArray encode(const PromptRequest& request) {
    JsonWriter writer;
    writer.beginObject();
    writer.member(u"prompt", request.prompt);
    writer.member(u"selectedText", request.selectedText);
    writer.member(u"screenDataUrl", request.screenDataUrl);
    writer.member(u"deepResearch", request.deepResearch);
    writer.member(u"skipUserPreferences", request.skipUserPreferences);
    writer.member(u"forceLearn", request.forceLearn);
    if (request.stream) writer.member(u"stream", true);
    if (!request.recentMessages.empty()) {
        writer.key(u"recentMessages");
        writer.beginArray();
        for (const RecentMessage& message : request.recentMessages) {
            writer.beginObject();
            writer.member(u"role", message.role);
            writer.member(u"content", message.content);
            writer.endObject();
        }
        writer.endArray();
    }
    writeModel(request.preferredModel, writer);
    writer.endObject();
    return writer.take();
}

QByteArray encode(const AnalyzeRequest& request) {
    JsonWriter writer;
    writer.beginObject();
    writer.member(u"text", request.text);
    writer.member(u"screenDataUrl", QStringView(u""));
    writer.member(u"stream", true);
    writeModel(request.preferredModel, writer);
    writer.endObject();
    return writer.take();
}

} // namespace vorq
