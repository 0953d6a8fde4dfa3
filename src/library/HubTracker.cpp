#include "library/HubTracker.h"

#include "library/RecordJson.h"

namespace vorq {

using strict_json::Element;
using strict_json::Object;
using strict_json::readIfPresent;
using strict_json::readRequired;

template<>
inline constexpr auto rawStrings<HubTrackerEntryKind> =
    std::to_array<QStringView>({u"checklist", u"sticky", u"marker"});

template<>
inline constexpr auto rawStrings<HubTrackerUrgency> =
    std::to_array<QStringView>({u"none", u"urgent", u"lessUrgent"});

template<>
inline constexpr auto rawStrings<HubTrackerCardScale> =
    std::to_array<QStringView>({u"automatic", u"twoX", u"threeX"});

template<>
inline constexpr auto rawStrings<HubTrackerPortSide> =
    std::to_array<QStringView>({u"top", u"right", u"bottom", u"left"});

template<>
inline constexpr auto rawStrings<HubTrackerConnectionKind> =
    std::to_array<QStringView>({u"tube", u"arrow"});

template<>
inline constexpr auto rawStrings<HubTrackerArrowEnds> =
    std::to_array<QStringView>({u"one", u"both"});

// Older versions had a larger scale; what later ones may add is left to the program.
static bool readLeniently(Object object, HubTrackerCardScale& scale) {
    QString text;
    if (!readIfPresent(object, "boardScale", text)) return false;
    const auto& strings = rawStrings<HubTrackerCardScale>;
    const auto found = std::ranges::find(strings, QStringView(text));
    if (text == u"fourX")
        scale = HubTrackerCardScale::ThreeX;
    else if (found != strings.end())
        scale = static_cast<HubTrackerCardScale>(found - strings.begin());
    return true;
}

static bool read(Element element, HubTrackerEntry& entry, Date now) {
    Object object;
    entry.createdAt = now;
    return element.get(object) == simdjson::SUCCESS && readRequired(object, "id", entry.id) &&
           readRequired(object, "text", entry.text) && readIfPresent(object, "done", entry.done) &&
           readIfPresent(object, "kind", entry.kind) &&
           readIfPresent(object, "createdAt", entry.createdAt) &&
           readIfPresent(object, "boardX", entry.boardX) &&
           readIfPresent(object, "boardY", entry.boardY) && readLeniently(object, entry.boardScale);
}

static bool read(Element element, HubTrackerConnection& connection) {
    Object object;
    connection.id = QUuid::createUuid();
    return element.get(object) == simdjson::SUCCESS && readIfPresent(object, "id", connection.id) &&
           readIfPresent(object, "fromEntryID", connection.fromEntryID) &&
           readIfPresent(object, "fromSide", connection.fromSide) &&
           readIfPresent(object, "toEntryID", connection.toEntryID) &&
           readIfPresent(object, "toSide", connection.toSide) &&
           readIfPresent(object, "kind", connection.kind) &&
           readIfPresent(object, "arrowEnds", connection.arrowEnds) &&
           readIfPresent(object, "fromX", connection.fromX) &&
           readIfPresent(object, "fromY", connection.fromY) &&
           readIfPresent(object, "toX", connection.toX) &&
           readIfPresent(object, "toY", connection.toY);
}

static bool read(Element element, HubTrackerPoint& point) {
    Object object;
    return element.get(object) == simdjson::SUCCESS && readRequired(object, "x", point.x) &&
           readRequired(object, "y", point.y);
}

static bool read(Element element, HubTrackerStroke& stroke) {
    Object object;
    return element.get(object) == simdjson::SUCCESS && readRequired(object, "id", stroke.id) &&
           readRequired(object, "points", stroke.points) &&
           readRequired(object, "lineWidth", stroke.lineWidth);
}

static bool readEntries(Object object, std::vector<HubTrackerEntry>& entries, Date now) {
    const std::optional<Element> found = strict_json::find(object, "entries");
    return !found || readEach(*found, entries, [now](Element element, HubTrackerEntry& entry) {
        return read(element, entry, now);
    });
}

static bool read(Element element, HubTracker& tracker, Date now) {
    Object object;
    tracker.createdAt = now;
    return element.get(object) == simdjson::SUCCESS && readRequired(object, "id", tracker.id) &&
           readRequired(object, "title", tracker.title) &&
           readEntries(object, tracker.entries, now) &&
           readIfPresent(object, "connections", tracker.connections) &&
           readIfPresent(object, "strokes", tracker.strokes) &&
           readIfPresent(object, "urgency", tracker.urgency) &&
           readIfPresent(object, "createdAt", tracker.createdAt);
}

static void write(JsonWriter& writer, const HubTrackerEntry& entry) {
    writer.beginObject();
    member(writer, u"boardScale", entry.boardScale);
    writer.member(u"boardX", entry.boardX);
    writer.member(u"boardY", entry.boardY);
    member(writer, u"createdAt", entry.createdAt);
    writer.member(u"done", entry.done);
    member(writer, u"id", entry.id);
    member(writer, u"kind", entry.kind);
    writer.member(u"text", entry.text);
    writer.endObject();
}

static void write(JsonWriter& writer, const HubTrackerConnection& connection) {
    writer.beginObject();
    member(writer, u"arrowEnds", connection.arrowEnds);
    memberIfPresent(writer, u"fromEntryID", connection.fromEntryID);
    memberIfPresent(writer, u"fromSide", connection.fromSide);
    writer.member(u"fromX", connection.fromX);
    writer.member(u"fromY", connection.fromY);
    member(writer, u"id", connection.id);
    member(writer, u"kind", connection.kind);
    memberIfPresent(writer, u"toEntryID", connection.toEntryID);
    memberIfPresent(writer, u"toSide", connection.toSide);
    writer.member(u"toX", connection.toX);
    writer.member(u"toY", connection.toY);
    writer.endObject();
}

static void write(JsonWriter& writer, const HubTrackerPoint& point) {
    writer.beginObject();
    writer.member(u"x", point.x);
    writer.member(u"y", point.y);
    writer.endObject();
}

static void write(JsonWriter& writer, const HubTrackerStroke& stroke) {
    writer.beginObject();
    member(writer, u"id", stroke.id);
    writer.member(u"lineWidth", stroke.lineWidth);
    writer.key(u"points");
    list(writer, stroke.points, [&](const HubTrackerPoint& point) { write(writer, point); });
    writer.endObject();
}

static void write(JsonWriter& writer, const HubTracker& tracker) {
    const auto writeRecord = [&writer](const auto& record) { write(writer, record); };
    writer.beginObject();
    writer.key(u"connections");
    list(writer, tracker.connections, writeRecord);
    member(writer, u"createdAt", tracker.createdAt);
    writer.key(u"entries");
    list(writer, tracker.entries, writeRecord);
    member(writer, u"id", tracker.id);
    writer.key(u"strokes");
    list(writer, tracker.strokes, writeRecord);
    writer.member(u"title", tracker.title);
    member(writer, u"urgency", tracker.urgency);
    writer.endObject();
}

std::optional<std::vector<HubTracker>> decodeHubTrackers(QByteArrayView json, Date now) {
    return decodedFile<HubTracker>(
        json, [now](Element element, HubTracker& tracker) { return read(element, tracker, now); });
}

QByteArray encode(const std::vector<HubTracker>& trackers) {
    return encodedFile(
        trackers, [](JsonWriter& writer, const HubTracker& tracker) { write(writer, tracker); });
}

} // namespace vorq
