#include "library/records/HubTask.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr Date now{1'700'000'000s};

constexpr const char* oldTask =
    R"({"id":"2f564652-466d-e486-522c-4f8d6102dd70","title":"a","done":false,"area":"study",)"
    R"("createdAt":"2026-03-01T00:00:00Z","updatedAt":"2026-03-02T00:00:00Z")";

HubTaskColumn column(const QString& name) {
    HubTaskColumn made;
    made.id = QUuid::createUuid();
    made.name = name;
    return made;
}

HubTask task(double order, std::optional<QUuid> columnID = {},
             std::optional<HubTaskPriority> priority = {}) {
    HubTask made;
    made.id = QUuid::createUuid();
    made.orderInColumn = order;
    made.columnID = columnID;
    made.legacyPriority = priority;
    return made;
}

TEST(HubTask, PriorityIsReadAndNeverWritten) {
    const QByteArray file = '[' + QByteArray(oldTask) + R"(,"priority":"soon"}])";
    const auto tasks = decodeHubTasks(file);
    ASSERT_TRUE(tasks);
    EXPECT_EQ(tasks->front().legacyPriority, HubTaskPriority::Soon);
    EXPECT_EQ(tasks->front().orderInColumn, 0.0);
    EXPECT_EQ(encode(*tasks), R"([
  {
    "area" : "study",
    "createdAt" : "2026-03-01T00:00:00Z",
    "done" : false,
    "id" : "2F564652-466D-E486-522C-4F8D6102DD70",
    "orderInColumn" : 0,
    "title" : "a",
    "updatedAt" : "2026-03-02T00:00:00Z"
  }
])");
}

TEST(HubTask, EveryOtherFieldSurvivesTheFile) {
    HubTask made = task(-3.25, QUuid::createUuid());
    made.title = "t";
    made.done = true;
    made.dueDate = now;
    made.area = HubArea::Writing;
    made.createdAt = now;
    made.updatedAt = now + 1s;
    EXPECT_EQ(decodeHubTasks(encode(std::vector{made})), std::vector{made});
}

TEST(HubTask, OneThatDoesNotFitEmptiesTheList) {
    for (const char* member : {R"("priority":"never")", R"("columnID":"x")", R"("dueDate":"x")",
                               R"("orderInColumn":"1")", R"("area":null)"})
        EXPECT_EQ(decodeHubTasks('[' + QByteArray(oldTask) + ',' + member + "}]"), std::nullopt)
            << member;
    EXPECT_NE(decodeHubTasks('[' + QByteArray(oldTask) + "}]"), std::nullopt);
}

TEST(HubTaskColumn, OldRecordReadsWithDefaults) {
    const auto columns = decodeHubTaskColumns(
        R"([{"id":"2f564652-466d-e486-522c-4f8d6102dd70","name":"Soon"}])", now);
    HubTaskColumn expected = column("Soon");
    expected.id = QUuid("2f564652-466d-e486-522c-4f8d6102dd70");
    expected.createdAt = now;
    EXPECT_EQ(columns, std::vector{expected});
    EXPECT_EQ(encode(*columns), R"([
  {
    "color" : "gray",
    "createdAt" : "2023-11-14T22:13:20Z",
    "icon" : "square",
    "id" : "2F564652-466D-E486-522C-4F8D6102DD70",
    "isCollapsed" : false,
    "name" : "Soon"
  }
])");
}

TEST(HubTaskColumn, UnknownColourEmptiesTheList) {
    HubTaskColumn made = column("x");
    made.color = HubTaskColor::Pink;
    QByteArray file = encode(std::vector{made});
    EXPECT_EQ(decodeHubTaskColumns(file, now), std::vector{made});
    EXPECT_EQ(decodeHubTaskColumns(file.replace("pink", "mauve"), now), std::nullopt);
}

TEST(MigrateHubTasks, MakesTheFirstColumns) {
    const HubTaskBoard board = migrateHubTasks({}, {}, now);
    ASSERT_EQ(board.columns.size(), 4);
    QStringList seen;
    for (const HubTaskColumn& made : board.columns) {
        EXPECT_EQ(made.createdAt, now);
        EXPECT_FALSE(made.isCollapsed);
        seen << made.name << made.icon;
    }
    EXPECT_EQ(seen, (QStringList{"Urgent", "flame.fill", "Important", "star.fill", "Soon",
                                 "clock.fill", "Later", "tray.fill"}));
    EXPECT_EQ(board.columns[2].color, HubTaskColor::Orange);
    EXPECT_NE(board.columns[0].id, board.columns[1].id);
}

TEST(MigrateHubTasks, PutsATaskWithoutItsColumnByPriorityElseIntoTheSecond) {
    const std::vector columns = {column("a"), column("b"), column("c")};
    const HubTaskBoard board =
        migrateHubTasks({task(1, {}, HubTaskPriority::Urgent), task(1, QUuid::createUuid()),
                         task(1, {}, HubTaskPriority::Later), task(1, columns[2].id)},
                        columns, now);
    EXPECT_EQ(board.tasks[0].columnID, columns[0].id);
    EXPECT_EQ(board.tasks[1].columnID, columns[1].id);
    EXPECT_EQ(board.tasks[2].columnID, columns[2].id);
    EXPECT_EQ(board.tasks[3].columnID, columns[2].id);
}

TEST(MigrateHubTasks, UsesTheOnlyColumnForAll) {
    const std::vector columns = {column("a")};
    const HubTaskBoard board = migrateHubTasks({task(1)}, columns, now);
    EXPECT_EQ(board.tasks[0].columnID, columns[0].id);
}

TEST(MigrateHubTasks, NumbersTasksWithoutAPlaceInTheirColumn) {
    const std::vector columns = {column("a"), column("b")};
    const HubTaskBoard board = migrateHubTasks({task(0, columns[0].id), task(2.5, columns[0].id),
                                                task(0, columns[1].id), task(0, columns[0].id)},
                                               columns, now);
    std::vector<double> orders;
    for (const HubTask& held : board.tasks)
        orders.push_back(held.orderInColumn);
    EXPECT_EQ(orders, (std::vector{1.0, 2.5, 1.0, 2.0}));
}

TEST(MigrateHubTasks, LeavesWhatIsInOrder) {
    const std::vector columns = {column("a")};
    const std::vector tasks = {task(3, columns[0].id)};
    EXPECT_EQ(migrateHubTasks(tasks, columns, now), (HubTaskBoard{tasks, columns}));
}

TEST(SortHubTasks, AsksForDoneOrderDueDateAndAge) {
    HubTask done = task(0);
    done.done = true;
    HubTask newer = task(1);
    newer.createdAt = now;
    HubTask due = task(1);
    due.dueDate = now;
    HubTask dueEarlier = task(1);
    dueEarlier.dueDate = now - 1s;
    const std::vector expected = {task(0.5), dueEarlier, due, newer, task(1), done};
    std::vector sorted(expected.rbegin(), expected.rend());
    std::ranges::sort(sorted, sortHubTasks);
    EXPECT_EQ(sorted, expected);
}

} // namespace
} // namespace vorq
