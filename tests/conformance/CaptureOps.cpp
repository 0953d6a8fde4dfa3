#include "capture/notes/AppleNotesExport.h"
#include "capture/placement/SelectionPlacement.h"
#include "capture/placement/TintSearch.h"
#include "capture/selection/AccessibleSelection.h"
#include "capture/selection/SelectionBounds.h"
#include "capture/source/SourceApplication.h"
#include "conformance/Ops.h"
#include "platform/testing/ScriptedAccessibility.h"

#include <QJsonArray>

#include <algorithm>
#include <array>
#include <vector>

using namespace Qt::StringLiterals;

namespace vorq::conformance {
namespace {

TextRange rangeOf(const QJsonObject& object, const char* key) {
    const QPointF pair = pointOf(object, key);
    return {.location = static_cast<std::int64_t>(pair.x()),
            .length = static_cast<std::int64_t>(pair.y())};
}

std::optional<QRectF> optionalRectOf(const QJsonObject& object, const char* key) {
    return has(object, key) ? std::optional(rectOf(object, key)) : std::nullopt;
}

QJsonValue nullable(const std::optional<QRectF>& rect) {
    return rect ? QJsonValue(jsonOf(*rect)) : QJsonValue(QJsonValue::Null);
}

void fill(ScriptedElement& element, const QJsonObject& from) {
    element.text = optionalStringOf(from, "AXSelectedText");
    element.content = optionalStringOf(from, "AXValue");
    if (has(from, "AXSelectedTextRange")) element.range = rangeOf(from, "AXSelectedTextRange");
    if (has(from, "AXPosition")) element.origin = pointOf(from, "AXPosition");
    if (has(from, "AXSize")) {
        const QPointF size = pointOf(from, "AXSize");
        element.extent = QSizeF(size.x(), size.y());
    }
    element.markerBounds = optionalRectOf(from, "markerBounds");
    if (has(from, "AXChildren")) {
        QStringList& names = element.childNames.emplace();
        for (const auto& child : arrayOf(from, "AXChildren"))
            names += child.toString();
    }
    if (!has(from, "bounds")) return;
    for (const auto& entry : arrayOf(from, "bounds"))
        element.bounds.emplace_back(rangeOf(entry.toObject(), "range"),
                                    rectOf(entry.toObject(), "rect"));
}

void fill(ScriptedAccessibility& accessibility, const QJsonObject& tree) {
    accessibility.applicationName = stringOf(tree, "application");
    accessibility.focusedName = optionalStringOf(tree, "focused");
    accessibility.focusedWindowName = optionalStringOf(tree, "focusedWindow");
    const QJsonObject elements = objectOf(tree, "elements");
    for (auto entry = elements.begin(); entry != elements.end(); ++entry)
        fill(accessibility.element(entry.key()), entry.value().toObject());
}

QJsonValue jsonOfCapture(const std::optional<AXCapture>& capture) {
    if (!capture) return QJsonValue::Null;
    QJsonObject out{{"text", capture->text}};
    if (capture->rawAXFrame) out["rawAXFrame"] = jsonOf(*capture->rawAXFrame);
    if (capture->elementAXFrame) out["elementAXFrame"] = jsonOf(*capture->elementAXFrame);
    if (const auto range = capture->selectedRange)
        out["selectedRange"] = QJsonArray{qint64{range->location}, qint64{range->length}};
    return out;
}

QJsonValue axCapture(const QJsonObject& in) {
    ScriptedAccessibility accessibility;
    fill(accessibility, objectOf(in, "tree"));
    const CaptureSource source{.accessibility = accessibility, .process = 1, .stop = {}};
    const QString call = stringOf(in, "call");
    if (call == u"captureFromFocusedAccessibilityElement")
        return jsonOfCapture(captureFromFocusedAccessibilityElement(source));
    if (call == u"captureSelectedTextFromFocusedElement")
        return captureSelectedTextFromFocusedElement(source);
    if (call != u"selectionOwningElement") throw MalformedInput("unknown call");
    const AccessibleElementPtr owner = selectionOwningElement(source);
    if (!owner) return QJsonValue::Null;
    return std::static_pointer_cast<ScriptedElement>(owner)->name();
}

ScreenLayout screensOf(const QJsonObject& in) {
    ScreenLayout screens;
    for (const auto& frame : arrayOf(in, "screens"))
        screens.frames.push_back(rectOf(QJsonObject{{"frame", frame}}, "frame"));
    if (!has(in, "main")) return screens;
    const auto index = static_cast<std::size_t>(integerOf(in, "main"));
    if (index >= screens.frames.size()) throw MalformedInput("no such screen");
    screens.main = screens.frames[index];
    return screens;
}

QJsonValue bounds(const QJsonObject& in) {
    ScriptedAccessibility accessibility;
    ScriptedElement& element = accessibility.element(u"element"_s);
    fill(element, objectOf(in, "element"));
    return nullable(
        selectionAXBounds(rangeOf(in, "range"), element, optionalRectOf(in, "elementFrame")));
}

std::array<std::uint8_t, 3> pixelOf(const QJsonArray& bgr) {
    if (bgr.size() != 3) throw MalformedInput("no colour");
    const auto byte = [&](qsizetype at) { return static_cast<std::uint8_t>(bgr[at].toInt()); };
    return {byte(0), byte(1), byte(2)};
}

/// The picture that the case paints, in pixels of four bytes.
class PaintedPicture {
  public:
    explicit PaintedPicture(const QJsonObject& in)
        : m_width(integerOf(in, "width")), m_height(integerOf(in, "height")) {
        constexpr std::int64_t maxSide = 10000;
        if (m_width < 0 || m_width > maxSide || m_height < 0 || m_height > maxSide)
            throw MalformedInput("no size of a picture");
        m_bytes.resize(static_cast<std::size_t>(m_width * m_height * 4));
        fill(QRectF(0, 0, double(m_width), double(m_height)), pixelOf(arrayOf(in, "background")));
        for (const auto& entry : arrayOf(in, "rects"))
            fill(rectOf(entry.toObject(), "rect"), pixelOf(arrayOf(entry.toObject(), "bgr")));
    }

    [[nodiscard]] PixelBuffer buffer() const {
        return {.bytes = m_bytes, .width = m_width, .height = m_height, .bytesPerRow = m_width * 4};
    }

  private:
    void fill(const QRectF& rect, std::array<std::uint8_t, 3> pixel) {
        const QRect area = rect.toRect().intersected(
            QRect(0, 0, static_cast<int>(m_width), static_cast<int>(m_height)));
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x)
                std::ranges::copy(pixel, m_bytes.begin() + (y * m_width + x) * 4);
        }
    }

    std::int64_t m_width;
    std::int64_t m_height;
    std::vector<std::uint8_t> m_bytes;
};

QJsonValue tintBounds(const QJsonObject& in) {
    std::vector<TintColor> ofDesktop;
    for (const auto& color : arrayOf(in, "systemColors")) {
        const QJsonArray parts = color.toArray();
        ofDesktop.push_back({.red = parts[0].toDouble(),
                             .green = parts[1].toDouble(),
                             .blue = parts[2].toDouble()});
    }
    const PaintedPicture picture(in);
    const QPointF size = pointOf(in, "windowSize");
    const TintQuery query{.windowSize = QSizeF(size.x(), size.y()),
                          .search = rectOf(in, "search"),
                          .seed = pointOf(in, "seed")};
    const auto box =
        selectionPixelBounds(picture.buffer(), query, selectionTargetColors(ofDesktop));
    return nullable(box ? std::optional(box->frame) : std::nullopt);
}

QJsonValue notesScript(const QJsonObject& in) {
    const QString call = stringOf(in, "call");
    if (call == u"createNote")
        return applenotes::createNoteScript(stringOf(in, "title"), stringOf(in, "body"));
    if (call == u"appendToNote")
        return applenotes::appendToNoteScript(stringOf(in, "id"), stringOf(in, "body"));
    if (call == u"listNotes")
        return applenotes::listNotesScript(static_cast<int>(integerOf(in, "limit")));
    if (call == u"noteBodyPlain") return applenotes::noteTextScript(stringOf(in, "id"));
    if (call == u"noteBodyHTML") return applenotes::noteHTMLScript(stringOf(in, "id"));
    throw MalformedInput("unknown call");
}

QJsonValue parsedNotesList(const QJsonObject& in) {
    QJsonArray out;
    for (const AppleNoteSummary& note : applenotes::parseNotesList(stringOf(in, "output")))
        out += QJsonObject{{"id", note.id}, {"title", note.title}};
    return out;
}

QJsonValue cleanedNoteHTML(const QJsonObject& in) {
    const std::optional<QString> text = applenotes::cleanNoteHTML(stringOf(in, "html"));
    return text ? QJsonValue(*text) : QJsonValue(QJsonValue::Null);
}

} // namespace

void addCaptureOps(Ops& ops) {
    ops["axCapture"] = axCapture;
    ops["selectionAXBounds"] = bounds;
    ops["selectionPixelBounds"] = tintBounds;
    ops["isBrowserBundleID"] = [](const QJsonObject& in) {
        return isBrowserBundleID(optionalStringOf(in, "bundleID").value_or(QString()));
    };
    ops["ownsNativeSaveAs"] = [](const QJsonObject& in) {
        return ownsNativeSaveAs(optionalStringOf(in, "bundleID").value_or(QString()));
    };
    ops["notesHTML"] = [](const QJsonObject& in) {
        return applenotes::notesHTML(stringOf(in, "text"));
    };
    ops["notesScript"] = notesScript;
    ops["parseNotesList"] = parsedNotesList;
    ops["cleanNoteHTML"] = cleanedNoteHTML;
    ops["cocoaRect"] = [](const QJsonObject& in) -> QJsonValue {
        return jsonOf(cocoaRect(rectOf(in, "rect"), screensOf(in)));
    };
    ops["highlightPlacementFrame"] = [](const QJsonObject& in) {
        return nullable(highlightPlacementFrame(optionalRectOf(in, "rect"), screensOf(in)));
    };
    ops["compactElementPlacementFrame"] = [](const QJsonObject& in) {
        return nullable(compactElementPlacementFrame(optionalRectOf(in, "rect"), screensOf(in)));
    };
}

} // namespace vorq::conformance
