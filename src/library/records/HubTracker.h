#pragma once

#include "library/json/JsonFile.h"
#include "support/Date.h"
#include "support/json/JsonWriter.h"

#include <QByteArray>
#include <QString>
#include <QUuid>

#include <cstdint>
#include <optional>
#include <vector>

namespace vorq {

enum class HubTrackerEntryKind : std::uint8_t { Checklist, Sticky, Marker };
enum class HubTrackerUrgency : std::uint8_t { None, Urgent, LessUrgent };
enum class HubTrackerCardScale : std::uint8_t { Automatic, TwoX, ThreeX };
enum class HubTrackerPortSide : std::uint8_t { Top, Right, Bottom, Left };
enum class HubTrackerConnectionKind : std::uint8_t { Tube, Arrow };
enum class HubTrackerArrowEnds : std::uint8_t { One, Both };

/// The name of the case in lower camel case, as it stands in files.
[[nodiscard]] QString rawString(HubTrackerUrgency urgency);

/// A card; its place on the board is that of its centre.
struct HubTrackerEntry {
    QUuid id;
    QString text;
    bool done = false;
    HubTrackerEntryKind kind = HubTrackerEntryKind::Checklist;
    Date createdAt;
    double boardX = 160.0;
    double boardY = 140.0;
    HubTrackerCardScale boardScale = HubTrackerCardScale::Automatic;

    bool operator==(const HubTrackerEntry&) const = default;
};

/// A tube joins two cards by their sides. An arrow has ends of its own, which may hang on cards.
struct HubTrackerConnection {
    QUuid id;
    std::optional<QUuid> fromEntryID;
    std::optional<HubTrackerPortSide> fromSide;
    std::optional<QUuid> toEntryID;
    std::optional<HubTrackerPortSide> toSide;
    HubTrackerConnectionKind kind = HubTrackerConnectionKind::Tube;
    HubTrackerArrowEnds arrowEnds = HubTrackerArrowEnds::One;
    double fromX = 0.0;
    double fromY = 0.0;
    double toX = 0.0;
    double toY = 0.0;

    bool operator==(const HubTrackerConnection&) const = default;
};

struct HubTrackerPoint {
    double x = 0.0;
    double y = 0.0;

    bool operator==(const HubTrackerPoint&) const = default;
};

/// A line of ink.
struct HubTrackerStroke {
    QUuid id;
    std::vector<HubTrackerPoint> points;
    double lineWidth = 0.0;

    bool operator==(const HubTrackerStroke&) const = default;
};

/// A free board of cards.
struct HubTracker {
    QUuid id;
    QString title;
    std::vector<HubTrackerEntry> entries;
    std::vector<HubTrackerConnection> connections;
    std::vector<HubTrackerStroke> strokes;
    HubTrackerUrgency urgency = HubTrackerUrgency::None;
    Date createdAt;

    bool operator==(const HubTracker&) const = default;
};

/// All trackers of a file; what has no date is of now, and a connection without an identity gets a
/// new one. Nothing if any of it does not fit.
[[nodiscard]] std::optional<std::vector<HubTracker>> decodeHubTrackers(JsonFile file, Date now);
[[nodiscard]] QByteArray encode(const std::vector<HubTracker>& trackers);
/// The same piece by piece.
void encode(const std::vector<HubTracker>& trackers, const JsonWriter::Sink& put);

} // namespace vorq
