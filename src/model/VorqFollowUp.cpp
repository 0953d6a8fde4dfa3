#include "model/VorqFollowUp.h"

#include "model/FollowUpJson.h"
#include "support/json/JsonWriter.h"

namespace vorq {

bool read(strict_json::Element element, VorqFollowUp& followUp) {
    strict_json::Object object;
    return element.get(object) == simdjson::SUCCESS &&
           strict_json::readRequired(object, "question", followUp.question) &&
           strict_json::readRequired(object, "labels", followUp.labels);
}

void encode(const VorqFollowUp& followUp, JsonWriter& writer) {
    writer.beginObject();
    writer.member(u"question", followUp.question);
    writer.key(u"labels");
    writer.beginArray();
    for (const QString& label : followUp.labels)
        writer.value(label);
    writer.endArray();
    writer.endObject();
}

} // namespace vorq
