#include "library/records/HubTracker.h"

#include "library/json/RecordJson.h"

namespace vorq {

template<>
inline constexpr auto rawStrings<HubTrackerEntryKind> =
    rawNames<HubTrackerEntryKind>({{HubTrackerEntryKind::Checklist, "checklist"},
                                   {HubTrackerEntryKind::Sticky, "sticky"},
                                   {HubTrackerEntryKind::Marker, "marker"}});

template<>
inline constexpr auto rawStrings<HubTrackerUrgency> =
    rawNames<HubTrackerUrgency>({{HubTrackerUrgency::None, "none"},
                                 {HubTrackerUrgency::Urgent, "urgent"},
                                 {HubTrackerUrgency::LessUrgent, "lessUrgent"}});

template<>
inline constexpr auto rawStrings<HubTrackerCardScale> =
    rawNames<HubTrackerCardScale>({{HubTrackerCardScale::Automatic, "automatic"},
                                   {HubTrackerCardScale::TwoX, "twoX"},
                                   {HubTrackerCardScale::ThreeX, "threeX"}});

template<>
inline constexpr auto rawStrings<HubTrackerPortSide> =
    rawNames<HubTrackerPortSide>({{HubTrackerPortSide::Top, "top"},
                                  {HubTrackerPortSide::Right, "right"},
                                  {HubTrackerPortSide::Bottom, "bottom"},
                                  {HubTrackerPortSide::Left, "left"}});

template<>
inline constexpr auto rawStrings<HubTrackerConnectionKind> = rawNames<HubTrackerConnectionKind>(
    {{HubTrackerConnectionKind::Tube, "tube"}, {HubTrackerConnectionKind::Arrow, "arrow"}});

template<>
inline constexpr auto rawStrings<HubTrackerArrowEnds> = rawNames<HubTrackerArrowEnds>(
    {{HubTrackerArrowEnds::One, "one"}, {HubTrackerArrowEnds::Both, "both"}});

// Older versions had a larger scale; what later ones may add is left to the program.
static bool readScale(RecordReader& reader, JsonValue& value, void* record) {
    HubTrackerCardScale& scale = static_cast<HubTrackerEntry*>(record)->boardScale;
    const std::optional<QByteArray> text = reader.readLatin1(value);
    if (!text) return false;
    if (*text == "fourX")
        scale = HubTrackerCardScale::ThreeX;
    else
        scale = rawStrings<HubTrackerCardScale>.caseOf(QByteArrayView(*text)).value_or(scale);
    return true;
}

static void setDefaults(HubTrackerEntry& entry, Date now) {
    entry.createdAt = now;
}

static void setDefaults(HubTrackerConnection& connection, Date /*now*/) {
    connection.id = QUuid::createUuid();
}

static void setDefaults(HubTracker& tracker, Date now) {
    tracker.createdAt = now;
}

template<>
inline constexpr auto fieldsOf<HubTrackerEntry> = std::to_array<Field>({
    {"boardScale", false, readScale, writeMemberOf<&HubTrackerEntry::boardScale>},
    defaulted<&HubTrackerEntry::boardX>("boardX"),
    defaulted<&HubTrackerEntry::boardY>("boardY"),
    defaulted<&HubTrackerEntry::createdAt>("createdAt"),
    defaulted<&HubTrackerEntry::done>("done"),
    required<&HubTrackerEntry::id>("id"),
    defaulted<&HubTrackerEntry::kind>("kind"),
    required<&HubTrackerEntry::text>("text"),
});

template<>
inline constexpr auto fieldsOf<HubTrackerConnection> = std::to_array<Field>({
    defaulted<&HubTrackerConnection::arrowEnds>("arrowEnds"),
    defaulted<&HubTrackerConnection::fromEntryID>("fromEntryID"),
    defaulted<&HubTrackerConnection::fromSide>("fromSide"),
    defaulted<&HubTrackerConnection::fromX>("fromX"),
    defaulted<&HubTrackerConnection::fromY>("fromY"),
    defaulted<&HubTrackerConnection::id>("id"),
    defaulted<&HubTrackerConnection::kind>("kind"),
    defaulted<&HubTrackerConnection::toEntryID>("toEntryID"),
    defaulted<&HubTrackerConnection::toSide>("toSide"),
    defaulted<&HubTrackerConnection::toX>("toX"),
    defaulted<&HubTrackerConnection::toY>("toY"),
});

template<>
inline constexpr auto fieldsOf<HubTrackerPoint> = std::to_array<Field>({
    required<&HubTrackerPoint::x>("x"),
    required<&HubTrackerPoint::y>("y"),
});

template<>
inline constexpr auto fieldsOf<HubTrackerStroke> = std::to_array<Field>({
    required<&HubTrackerStroke::id>("id"),
    required<&HubTrackerStroke::lineWidth>("lineWidth"),
    required<&HubTrackerStroke::points>("points"),
});

template<>
inline constexpr auto fieldsOf<HubTracker> = std::to_array<Field>({
    defaulted<&HubTracker::connections>("connections"),
    defaulted<&HubTracker::createdAt>("createdAt"),
    defaulted<&HubTracker::entries>("entries"),
    required<&HubTracker::id>("id"),
    defaulted<&HubTracker::strokes>("strokes"),
    required<&HubTracker::title>("title"),
    defaulted<&HubTracker::urgency>("urgency"),
});

std::optional<std::vector<HubTracker>> decodeHubTrackers(JsonFile file, Date now) {
    return decodedFile<HubTracker>(file, now);
}

QByteArray encode(const std::vector<HubTracker>& trackers) {
    return encodedFile(trackers);
}

void encode(const std::vector<HubTracker>& trackers, const JsonWriter::Sink& put) {
    encodeFile(trackers, put);
}

QString rawString(HubTrackerUrgency urgency) {
    return rawStrings<HubTrackerUrgency>.nameOf(urgency);
}

} // namespace vorq
