#include "conformance/Ops.h"
#include "writing/RewriteExtraction.h"
#include "writing/WritingAsk.h"
#include "writing/WritingPrompts.h"
#include "writing/WritingSessionLog.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace vorq::conformance {
namespace {

using Kind = WritingToolsInteraction::Kind;

Kind kindOf(const QJsonObject& interaction) {
    const QString name = stringOf(interaction, "kind");
    if (name == u"asked") return Kind::asked(stringOf(interaction, "text"));
    if (name == u"selectionTextChanged")
        return Kind::selectionTextChanged(stringOf(interaction, "text"));
    if (name == u"opened") return Kind::opened();
    if (name == u"rejectedTake") return Kind::rejectedTake();
    if (name == u"acceptedReplace") return Kind::acceptedReplace();
    if (name == u"highlightMoved") return Kind::highlightMoved();
    throw MalformedInput("\"kind\" is unknown");
}

QJsonValue sessionContextBlock(const QJsonObject& in) {
    WritingSessionLog log;
    for (const auto& value : arrayOf(in, "interactions")) {
        const QJsonObject interaction = value.toObject();
        const QTime time = QTime::fromString(stringOf(interaction, "time"), u"HH:mm:ss"_s);
        if (!time.isValid()) throw MalformedInput("\"time\" is no time");
        log.record(QDateTime(QDate(2026, 1, 15), time), kindOf(interaction));
    }
    return log.contextBlock();
}

QStringList textsOf(const QJsonObject& in, const char* key) {
    QStringList texts;
    for (const auto& value : arrayOf(in, key)) {
        if (!value.isString()) throw MalformedInput(std::string("\"") + key + "\" holds no text");
        texts += value.toString();
    }
    return texts;
}

} // namespace

void addWritingOps(Ops& ops) {
    ops["classifyWritingPrompt"] = [](const QJsonObject& in) -> QJsonValue {
        const QString text = stringOf(in, "text");
        return QJsonObject{{"sendToVorq", isSendToVorqPrompt(text)},
                           {"applyOnly", isApplyOnlyPrompt(text)},
                           {"anotherTake", isAnotherTakePrompt(text)}};
    };
    ops["writingPrompt"] = [](const QJsonObject& in) -> QJsonValue {
        return promptForUserInstruction(stringOf(in, "ask"), stringOf(in, "current"),
                                        stringOf(in, "session"));
    };
    ops["anotherTakePrompt"] = [](const QJsonObject& in) -> QJsonValue {
        return promptForAnotherTake(optionalStringOf(in, "lastInstruction"),
                                    textsOf(in, "avoiding"), stringOf(in, "session"));
    };
    ops["extractRewrite"] = [](const QJsonObject& in) -> QJsonValue {
        return extractRewrite(stringOf(in, "answer"), stringOf(in, "fallbackSource"));
    };
    ops["sessionContextBlock"] = sessionContextBlock;
}

} // namespace vorq::conformance
