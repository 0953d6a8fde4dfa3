#include "backend/api/AIAnalysis.h"

#include "backend/api/AnalysisJson.h"
#include "support/json/JsonWriter.h"

namespace vorq {

bool read(strict_json::Element element, AISource& source) {
    strict_json::Object object;
    return element.get(object) == simdjson::SUCCESS &&
           strict_json::readIfPresent(object, "title", source.title) &&
           strict_json::readIfPresent(object, "url", source.url);
}

static bool read(strict_json::Element element, AIAnalysis& analysis) {
    strict_json::Object object;
    return element.get(object) == simdjson::SUCCESS &&
           strict_json::readRequired(object, "summary", analysis.summary) &&
           strict_json::readRequired(object, "feedback", analysis.feedback) &&
           strict_json::readRequired(object, "corrections", analysis.corrections) &&
           strict_json::readRequired(object, "sources", analysis.sources) &&
           strict_json::readIfPresent(object, "followUp", analysis.followUp);
}

std::optional<AIAnalysis> decodeAIAnalysis(QByteArrayView json) {
    return strict_json::decodeDocument<AIAnalysis>(json);
}

static void encode(const AISource& source, JsonWriter& writer) {
    writer.beginObject();
    if (source.title) writer.member(u"title", *source.title);
    if (source.url) writer.member(u"url", *source.url);
    writer.endObject();
}

void encode(const AIAnalysis& analysis, JsonWriter& writer) {
    writer.beginObject();
    writer.member(u"summary", analysis.summary);
    writer.member(u"feedback", analysis.feedback);
    writer.member(u"corrections", analysis.corrections);
    writer.key(u"sources");
    writer.beginArray();
    for (const AISource& source : analysis.sources)
        encode(source, writer);
    writer.endArray();
    if (analysis.followUp) {
        writer.key(u"followUp");
        encode(*analysis.followUp, writer);
    }
    writer.endObject();
}

} // namespace vorq
