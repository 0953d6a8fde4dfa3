#include "library/HubTask.h"

#include "library/HubAreaJson.h"

#include <algorithm>

namespace vorq {

using strict_json::Element;
using strict_json::Object;
using strict_json::readIfPresent;
using strict_json::readRequired;

template<>
inline constexpr auto rawStrings<HubTaskPriority> =
    std::to_array<QStringView>({u"urgent", u"important", u"soon", u"later"});

template<>
inline constexpr auto rawStrings<HubTaskColor> =
    std::to_array<QStringView>({u"red", u"orange", u"amber", u"green", u"teal", u"blue", u"indigo",
                                u"purple", u"pink", u"gray"});

static bool read(Element element, HubTask& task) {
    Object object;
    return element.get(object) == simdjson::SUCCESS && readRequired(object, "id", task.id) &&
           readRequired(object, "title", task.title) && readRequired(object, "done", task.done) &&
           readIfPresent(object, "dueDate", task.dueDate) &&
           readRequired(object, "area", task.area) &&
           readIfPresent(object, "columnID", task.columnID) &&
           readIfPresent(object, "orderInColumn", task.orderInColumn) &&
           readIfPresent(object, "priority", task.legacyPriority) &&
           readRequired(object, "createdAt", task.createdAt) &&
           readRequired(object, "updatedAt", task.updatedAt);
}

static bool read(Element element, HubTaskColumn& column, Date now) {
    Object object;
    column.createdAt = now;
    return element.get(object) == simdjson::SUCCESS && readRequired(object, "id", column.id) &&
           readRequired(object, "name", column.name) &&
           readIfPresent(object, "icon", column.icon) &&
           readIfPresent(object, "color", column.color) &&
           readIfPresent(object, "isCollapsed", column.isCollapsed) &&
           readIfPresent(object, "createdAt", column.createdAt);
}

static void write(JsonWriter& writer, const HubTask& task) {
    writer.beginObject();
    member(writer, u"area", task.area);
    memberIfPresent(writer, u"columnID", task.columnID);
    member(writer, u"createdAt", task.createdAt);
    writer.member(u"done", task.done);
    memberIfPresent(writer, u"dueDate", task.dueDate);
    member(writer, u"id", task.id);
    writer.member(u"orderInColumn", task.orderInColumn);
    writer.member(u"title", task.title);
    member(writer, u"updatedAt", task.updatedAt);
    writer.endObject();
}

static void write(JsonWriter& writer, const HubTaskColumn& column) {
    writer.beginObject();
    member(writer, u"color", column.color);
    member(writer, u"createdAt", column.createdAt);
    writer.member(u"icon", column.icon);
    member(writer, u"id", column.id);
    writer.member(u"isCollapsed", column.isCollapsed);
    writer.member(u"name", column.name);
    writer.endObject();
}

std::optional<std::vector<HubTask>> decodeHubTasks(QByteArrayView json) {
    return strict_json::decodeDocument<std::vector<HubTask>>(json);
}

QByteArray encode(const std::vector<HubTask>& tasks) {
    return encodedFile(tasks, [](JsonWriter& writer, const HubTask& task) { write(writer, task); });
}

std::optional<std::vector<HubTaskColumn>> decodeHubTaskColumns(QByteArrayView json, Date now) {
    return decodedFile<HubTaskColumn>(
        json, [now](Element element, HubTaskColumn& column) { return read(element, column, now); });
}

QByteArray encode(const std::vector<HubTaskColumn>& columns) {
    return encodedFile(
        columns, [](JsonWriter& writer, const HubTaskColumn& column) { write(writer, column); });
}

namespace {

std::vector<HubTaskColumn> firstColumns(Date now) {
    const auto column = [now](const QString& name, const QString& icon, HubTaskColor color) {
        return HubTaskColumn{QUuid::createUuid(), name, icon, color, false, now};
    };
    return {
        column(QStringLiteral("Urgent"), QStringLiteral("flame.fill"), HubTaskColor::Red),
        column(QStringLiteral("Important"), QStringLiteral("star.fill"), HubTaskColor::Blue),
        column(QStringLiteral("Soon"), QStringLiteral("clock.fill"), HubTaskColor::Orange),
        column(QStringLiteral("Later"), QStringLiteral("tray.fill"), HubTaskColor::Gray),
    };
}

} // namespace

HubTaskBoard migrateHubTasks(std::vector<HubTask> tasks, std::vector<HubTaskColumn> columns,
                             Date now) {
    HubTaskBoard board{std::move(tasks), std::move(columns)};
    if (board.columns.empty()) board.columns = firstColumns(now);
    std::vector<double> lastOrders(board.columns.size(), 0.0);
    for (HubTask& task : board.tasks) {
        auto column =
            std::ranges::find(board.columns, task.columnID,
                              [](const HubTaskColumn& held) { return std::optional(held.id); });
        if (column == board.columns.end()) {
            const auto priority = task.legacyPriority.value_or(HubTaskPriority::Important);
            const auto index =
                std::min(static_cast<std::size_t>(priority), board.columns.size() - 1);
            column = board.columns.begin() + static_cast<std::ptrdiff_t>(index);
            task.columnID = column->id;
        }
        if (task.orderInColumn == 0.0) {
            double& last = lastOrders[static_cast<std::size_t>(column - board.columns.begin())];
            task.orderInColumn = ++last;
        }
    }
    return board;
}

bool sortHubTasks(const HubTask& a, const HubTask& b) {
    if (a.done != b.done) return b.done;
    if (a.orderInColumn != b.orderInColumn) return a.orderInColumn < b.orderInColumn;
    if (a.dueDate.has_value() != b.dueDate.has_value()) return a.dueDate.has_value();
    if (a.dueDate != b.dueDate) return a.dueDate < b.dueDate;
    return a.createdAt > b.createdAt;
}

} // namespace vorq
