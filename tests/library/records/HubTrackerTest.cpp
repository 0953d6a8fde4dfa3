#include "library/records/HubTracker.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr Date now{1'700'000'000s};
constexpr const char* identity = "2f564652-466d-e486-522c-4f8d6102dd70";

std::optional<std::vector<HubTracker>> trackerWith(const QByteArray& members) {
    return decodeHubTrackers(
        R"([{"id":")" + QByteArray(identity) + R"(","title":"t")" + members + "}]", now);
}

std::optional<std::vector<HubTracker>> entryWith(const QByteArray& members) {
    return trackerWith(R"(,"entries":[{"id":")" + QByteArray(identity) + R"(","text":"e")" +
                       members + "}]");
}

TEST(HubTracker, OldRecordReadsWithDefaults) {
    HubTracker expected;
    expected.id = QUuid(identity);
    expected.title = "t";
    expected.createdAt = now;
    EXPECT_EQ(trackerWith(""), std::vector{expected});
}

TEST(HubTracker, OldCardStandsAtTheDefaultPlace) {
    HubTrackerEntry expected;
    expected.id = QUuid(identity);
    expected.text = "e";
    expected.createdAt = now;
    const auto trackers = entryWith("");
    ASSERT_TRUE(trackers);
    EXPECT_EQ(trackers->front().entries, std::vector{expected});
    EXPECT_EQ(expected.boardX, 160.0);
    EXPECT_EQ(expected.boardY, 140.0);
    EXPECT_EQ(expected.kind, HubTrackerEntryKind::Checklist);
}

TEST(HubTracker, AnyScaleOfACardIsRead) {
    const auto scaleOf = [](const char* text) {
        const auto trackers = entryWith(R"(,"boardScale":")" + QByteArray(text) + '"');
        return trackers ? std::optional(trackers->front().entries.front().boardScale)
                        : std::nullopt;
    };
    EXPECT_EQ(scaleOf("twoX"), HubTrackerCardScale::TwoX);
    EXPECT_EQ(scaleOf("fourX"), HubTrackerCardScale::ThreeX);
    EXPECT_EQ(scaleOf("fiveX"), HubTrackerCardScale::Automatic);
    EXPECT_EQ(entryWith(R"(,"boardScale":2)"), std::nullopt);
}

TEST(HubTracker, AScaleOfAnEarlierBuildIsWrittenBackAsTheOneItIs) {
    const auto trackers = entryWith(R"(,"boardScale":"fourX")");
    ASSERT_TRUE(trackers);
    const QByteArray written = encode(*trackers);
    EXPECT_TRUE(written.contains(R"("boardScale" : "threeX")"));
    EXPECT_FALSE(written.contains("fourX"));
}

TEST(HubTracker, AConnectionOfTwoIdsOnlyIsATubeWithoutSides) {
    const QByteArray from = "6F9619FF-8B86-D011-B42D-00C04FC964FF";
    const QByteArray to = "11111111-8B86-D011-B42D-00C04FC964FF";
    const auto trackers = trackerWith(R"(,"connections":[{"fromEntryID":")" + from +
                                      R"(","toEntryID":")" + to + R"("}])");
    ASSERT_TRUE(trackers);
    ASSERT_EQ(trackers->front().connections.size(), 1);
    HubTrackerConnection expected;
    expected.id = trackers->front().connections.front().id;
    expected.fromEntryID = QUuid::fromString(QLatin1StringView(from));
    expected.toEntryID = QUuid::fromString(QLatin1StringView(to));
    EXPECT_FALSE(expected.id.isNull());
    EXPECT_EQ(expected.kind, HubTrackerConnectionKind::Tube);
    EXPECT_EQ(trackers->front().connections.front(), expected);
}

TEST(HubTracker, ConnectionOfAnyOlderVersionIsRead) {
    const auto trackers = trackerWith(R"(,"connections":[{},{}])");
    ASSERT_TRUE(trackers);
    const auto& connections = trackers->front().connections;
    ASSERT_EQ(connections.size(), 2);
    EXPECT_NE(connections[0].id, connections[1].id);
    HubTrackerConnection expected;
    expected.id = connections[0].id;
    EXPECT_EQ(connections[0], expected);
}

TEST(HubTracker, EveryFieldSurvivesTheFile) {
    const QUuid id(identity);
    const HubTracker tracker{
        id,
        "t",
        {{id, "e", true, HubTrackerEntryKind::Marker, now, 1.5, -2, HubTrackerCardScale::ThreeX}},
        {{id, id, HubTrackerPortSide::Left, id, HubTrackerPortSide::Bottom,
          HubTrackerConnectionKind::Arrow, HubTrackerArrowEnds::Both, 0.1, 2, 3, 4}},
        {{id, {{1, 2.5}, {0, 12345.678}}, 2.2}},
        HubTrackerUrgency::LessUrgent,
        now};
    EXPECT_EQ(decodeHubTrackers(encode(std::vector{tracker}), Date()), std::vector{tracker});
}

TEST(HubTracker, IsWrittenWithItsKeysInOrder) {
    const auto trackers = trackerWith(R"(,"connections":[{"id":")" + QByteArray(identity) +
                                      R"("}],"urgency":"lessUrgent")");
    ASSERT_TRUE(trackers);
    EXPECT_EQ(encode(*trackers), R"([
  {
    "connections" : [
      {
        "arrowEnds" : "one",
        "fromX" : 0,
        "fromY" : 0,
        "id" : "2F564652-466D-E486-522C-4F8D6102DD70",
        "kind" : "tube",
        "toX" : 0,
        "toY" : 0
      }
    ],
    "createdAt" : "2023-11-14T22:13:20Z",
    "entries" : [

    ],
    "id" : "2F564652-466D-E486-522C-4F8D6102DD70",
    "strokes" : [

    ],
    "title" : "t",
    "urgency" : "lessUrgent"
  }
])");
}

TEST(HubTracker, OneThatDoesNotFitEmptiesTheList) {
    for (const char* members :
         {R"(,"urgency":"never")", R"(,"strokes":[{}])", R"(,"connections":[{"kind":"rope"}])",
          R"(,"connections":[{"fromSide":"middle"}])", R"(,"createdAt":"x")"})
        EXPECT_EQ(trackerWith(members), std::nullopt) << members;
    for (const char* members : {R"(,"kind":"x")", R"(,"boardX":"1")", R"(,"done":0)"})
        EXPECT_EQ(entryWith(members), std::nullopt) << members;
}

} // namespace
} // namespace vorq
