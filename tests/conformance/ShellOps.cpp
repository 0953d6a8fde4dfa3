#include "conformance/Ops.h"
#include "shell/HexColor.h"
#include "shell/SourceProcess.h"

#include <QJsonArray>

namespace vorq::conformance {
namespace {

using ProcessId = SelectionCapture::ProcessId;

QJsonValue hexColor(const QJsonObject& in) {
    const QString text = stringOf(in, "text");
    QJsonObject out{{"rgba", QJsonValue::Null}, {"normalized", QJsonValue::Null}};
    if (const auto color = HexColor::rgbaComponents(text))
        out["rgba"] = QJsonArray{color->red, color->green, color->blue, color->alpha};
    if (const auto normalized = HexColor::normalize(text)) out["normalized"] = *normalized;
    out["contrast"] = HexColor::contrastingForeground(text);
    return out;
}

std::optional<ProcessId> processOf(const QJsonObject& object, const char* key) {
    const QJsonValue value = object.value(QLatin1StringView(key));
    if (value.isUndefined() || value.isNull()) return std::nullopt;
    return static_cast<ProcessId>(integerOf(object, key));
}

QJsonValue sourceProcess(const QJsonObject& in) {
    const auto process = resolveSourcePID({.own = static_cast<ProcessId>(integerOf(in, "own")),
                                           .given = processOf(in, "given"),
                                           .lastForeign = processOf(in, "lastForeign"),
                                           .frontmost = processOf(in, "frontmost")});
    return process ? QJsonValue(*process) : QJsonValue(QJsonValue::Null);
}

} // namespace

void addShellOps(Ops& ops) {
    ops["hexColor"] = hexColor;
    ops["resolveSourcePID"] = sourceProcess;
}

} // namespace vorq::conformance
