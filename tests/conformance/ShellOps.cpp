#include "capture/source/SourceProcess.h"
#include "conformance/Ops.h"
#include "platform/ProcessId.h"
#include "shell/look/HexColor.h"
#include "shell/window/PanelDock.h"

#include <QJsonArray>

#include <array>

namespace vorq::conformance {
namespace {

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
    if (!has(object, key)) return std::nullopt;
    return static_cast<ProcessId>(integerOf(object, key));
}

QJsonValue sourceProcess(const QJsonObject& in) {
    const auto process = resolveSourcePID({.own = static_cast<ProcessId>(integerOf(in, "own")),
                                           .given = processOf(in, "given"),
                                           .lastForeign = processOf(in, "lastForeign"),
                                           .frontmost = processOf(in, "frontmost")});
    return process ? QJsonValue(*process) : QJsonValue(QJsonValue::Null);
}

constexpr std::array targetNames{"left", "center", "right"};
constexpr std::array phaseNames{"idle", "pending", "dragging"};

PanelDockTarget targetOf(const QJsonObject& in) {
    const QString name = stringOf(in, "target");
    for (std::size_t i = 0; i < targetNames.size(); ++i)
        if (name == QLatin1StringView(targetNames[i])) return static_cast<PanelDockTarget>(i);
    throw MalformedInput("unknown target");
}

QJsonValue target(const QJsonObject& in) {
    const PanelDockTarget nearest = dockFrom(rectOf(in, "frame"), rectOf(in, "visibleFrame"));
    return targetNames[static_cast<std::size_t>(nearest)];
}

PanelDockStep step(PanelDockDragSession& session, const QJsonObject& event, const QRectF& frame,
                   const QJsonObject& in) {
    const QString type = stringOf(event, "type");
    if (type == u"up") return session.mouseUp();
    const QPointF at = pointOf(event, "at");
    if (type == u"drag") return session.mouseDragged(at, numberOf(event, "t"));
    if (type != u"down") throw MalformedInput("unknown type of event");
    return session.mouseDown(
        {.at = at,
         .yInWindow = has(event, "inWindowY") ? numberOf(event, "inWindowY") : at.y() - frame.y(),
         .target = boolOf(in, "onSelectableText") ? PanelPressTarget::SelectableText
                                                  : PanelPressTarget::Plain,
         .windowFrame = frame,
         .visibleFrame = rectOf(in, "visibleFrame"),
         .seconds = numberOf(event, "t")});
}

QJsonValue dockDrag(const QJsonObject& in) {
    PanelDockDragSession session;
    QRectF frame = rectOf(in, "frame");
    QJsonArray out;
    for (const QJsonValue& event : arrayOf(in, "events")) {
        const PanelDockStep taken = step(session, event.toObject(), frame, in);
        frame = taken.frame.value_or(frame);
        out += QJsonObject{{"swallowed", taken.isSwallowed},
                           {"frame", jsonOf(frame)},
                           {"phase", phaseNames[static_cast<std::size_t>(session.phase())]}};
    }
    return out;
}

} // namespace

void addShellOps(Ops& ops) {
    ops["hexColor"] = hexColor;
    ops["resolveSourcePID"] = sourceProcess;
    ops["dockFrame"] = [](const QJsonObject& in) -> QJsonValue {
        return jsonOf(dockFrame(targetOf(in), rectOf(in, "visibleFrame")));
    };
    ops["dockFrom"] = target;
    ops["dockDrag"] = dockDrag;
}

} // namespace vorq::conformance
