#include "shell/selftest/SelfTestReport.h"

#include "shell/selftest/PrivateWords.h"
#include "support/json/JsonWriter.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int schemaVersion = 1;

void write(JsonWriter& writer, const ReportedCheck& check) {
    writer.member(u"id", check.id);
    writer.member(u"state", selfCheckStates.nameOf(check.state));
    writer.member(u"sentence", check.sentence);
    writer.member(u"advice", check.advice);
}

} // namespace

ReportedCheck reported(const SelfCheck& check, const PrivateWords& secrets) {
    return {.id = check.id,
            .state = check.state,
            .sentence = secrets.without(check.sentence.plain()),
            .advice = secrets.without(check.advice.plain()),
            .details = check.details};
}

QByteArray encode(const ReportedCheck& check) {
    JsonWriter writer;
    writer.beginObject();
    write(writer, check);
    writer.key(u"details");
    writer.beginArray();
    for (const QString& detail : check.details)
        writer.value(detail);
    writer.endArray();
    writer.endObject();
    return writer.take();
}

std::optional<ReportedCheck> decodeReportedCheck(const QByteArray& json) {
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    const QString state = object.value("state"_L1).toString();
    const auto known = selfCheckStates.caseOf(QStringView(state));
    const QString id = object.value("id"_L1).toString();
    if (id.isEmpty() || !known) return std::nullopt;
    ReportedCheck check{.id = id,
                        .state = *known,
                        .sentence = object.value("sentence"_L1).toString(),
                        .advice = object.value("advice"_L1).toString(),
                        .details = {}};
    const QJsonArray details = object.value("details"_L1).toArray();
    for (const auto& detail : details)
        check.details += detail.toString();
    return check;
}

QByteArray reportDocument(const ReportHead& head, const QList<ReportedCheck>& checks) {
    const auto failures = std::ranges::count(checks, SelfCheckState::Failed, &ReportedCheck::state);
    JsonWriter writer;
    writer.beginObject();
    writer.member(u"schema", u"com.vorq.self-test"_s);
    writer.member(u"schemaVersion", schemaVersion);
    writer.member(u"vorq", head.version);
    writer.member(u"qt", QString::fromLatin1(qVersion()));
    writer.member(u"testedProgram", head.isOfRunningProgram ? u"running"_s : u"alone"_s);
    writer.member(u"failures", qint64(failures));
    writer.key(u"checks");
    writer.beginArray();
    for (const ReportedCheck& check : checks) {
        writer.beginObject();
        write(writer, check);
        writer.endObject();
    }
    writer.endArray();
    writer.endObject();
    return writer.take() + '\n';
}

} // namespace vorq
