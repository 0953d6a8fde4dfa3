#include "backend/api/AIAnalysis.h"
#include "backend/api/AnalysisStream.h"
#include "backend/http/Errors.h"
#include "conformance/Ops.h"
#include "conversation/BlockReveal.h"
#include "conversation/GraphemeTypewriter.h"
#include "rendering/AssistantReplyDocument.h"
#include "support/json/JsonWriter.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace vorq::conformance {
namespace {

using Block = AssistantReplyDocument::Block;
using Kind = AssistantReplyDocument::Kind;

QJsonArray arrayFrom(const QStringList& texts) {
    return QJsonArray::fromStringList(texts);
}

QStringList textsOf(const QJsonArray& array) {
    QStringList texts;
    for (const QJsonValue& value : array)
        texts += value.toString();
    return texts;
}

QJsonObject jsonOf(const Block& block) {
    QJsonObject object{{"kind", QString(AssistantReplyDocument::kindName(block.kind))}};
    switch (block.kind) {
    case Kind::Bullets:
    case Kind::Numbered:
        object["items"] = arrayFrom(block.items);
        break;
    case Kind::Table: {
        QJsonArray rows;
        for (const QStringList& row : block.rows)
            rows += arrayFrom(row);
        object["header"] = arrayFrom(block.header);
        object["rows"] = rows;
        break;
    }
    case Kind::Divider:
        break;
    default:
        object["text"] = block.text;
    }
    return object;
}

Block blockOf(const QJsonObject& object) {
    const QString kind = stringOf(object, "kind");
    Block block;
    for (int i = 0; i <= static_cast<int>(Kind::Divider); ++i) {
        block.kind = static_cast<Kind>(i);
        if (AssistantReplyDocument::kindName(block.kind) == kind) break;
        if (block.kind == Kind::Divider) throw MalformedInput("unknown kind of block");
    }
    block.text = object["text"].toString();
    block.items = textsOf(object["items"].toArray());
    block.header = textsOf(object["header"].toArray());
    for (const QJsonValue& row : object["rows"].toArray())
        block.rows += textsOf(row.toArray());
    return block;
}

AIAnalysis analysisOf(const QJsonObject& object) {
    const auto analysis = decodeAIAnalysis(QJsonDocument(object).toJson());
    if (!analysis) throw MalformedInput("not an analysis");
    return *analysis;
}

QJsonValue jsonOf(const AIAnalysis& analysis) {
    JsonWriter writer;
    encode(analysis, writer);
    return parsed(writer.take());
}

QJsonValue blocks(const QJsonObject& in) {
    QJsonArray out;
    for (const Block& block : AssistantReplyDocument::blocks(stringOf(in, "text")))
        out += jsonOf(block);
    return out;
}

QJsonValue source(const QJsonObject& in) {
    QList<Block> list;
    for (const QJsonValue& block : arrayOf(in, "blocks"))
        list += blockOf(block.toObject());
    return AssistantReplyDocument::source(list);
}

QJsonValue readStream(const QJsonObject& in) {
    QJsonArray deltas;
    QJsonObject out;
    AnalysisStream stream([&deltas](const QString& text) { deltas += text; });
    try {
        for (const QJsonValue& chunk : arrayOf(in, "chunks"))
            if (stream.feed(chunk.toString().toUtf8())) break;
        out["analysis"] = jsonOf(stream.finish());
    } catch (const ServiceError& error) {
        out["error"] = error.message();
    }
    out["deltas"] = deltas;
    return out;
}

QJsonValue typingBoundary(const QJsonObject& in) {
    const QString text = stringOf(in, "text");
    return qint64{
        preferTypingBoundary(splitGraphemes(text), integerOf(in, "from"), integerOf(in, "toward"))};
}

QJsonValue graphemePace(const QJsonObject& in) {
    const GraphemePace pace = GraphemePace::forLength(integerOf(in, "length"));
    return QJsonObject{{"base", pace.base}, {"duration", pace.duration}, {"rate", pace.rate}};
}

QJsonValue blockReveal(const QJsonObject& in) {
    BlockReveal reveal(trimmed(stringOf(in, "text")).toString(), stringOf(in, "existing"));
    QJsonArray steps;
    while (const auto step = reveal.next())
        steps += QJsonArray{step->text, step->isTyping};
    return steps;
}

} // namespace

void addReplyOps(Ops& ops) {
    ops["blocks"] = blocks;
    ops["source"] = source;
    ops["committedSource"] = [](const QJsonObject& in) -> QJsonValue {
        return AssistantReplyDocument::committedSource(stringOf(in, "text"),
                                                       boolOf(in, "finished"));
    };
    ops["inlinePlain"] = [](const QJsonObject& in) -> QJsonValue {
        return AssistantReplyDocument::inlinePlain(stringOf(in, "text"));
    };
    ops["displayText"] = [](const QJsonObject& in) -> QJsonValue {
        return displayText(analysisOf(objectOf(in, "analysis")));
    };
    ops["isInstantAssistantReply"] = [](const QJsonObject& in) -> QJsonValue {
        return isInstantAssistantReply(stringOf(in, "text"));
    };
    ops["readStream"] = readStream;
    ops["preferTypingBoundary"] = typingBoundary;
    ops["graphemePace"] = graphemePace;
    ops["blockReveal"] = blockReveal;
}

} // namespace vorq::conformance
