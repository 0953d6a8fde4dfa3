#include "library/records/HubTask.h"

#include "library/records/HubAreaJson.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {

template<>
inline constexpr auto rawStrings<HubTaskPriority> =
    rawNames<HubTaskPriority>({{HubTaskPriority::Urgent, "urgent"},
                               {HubTaskPriority::Important, "important"},
                               {HubTaskPriority::Soon, "soon"},
                               {HubTaskPriority::Later, "later"}});

template<>
inline constexpr auto rawStrings<HubTaskColor> =
    rawNames<HubTaskColor>({{HubTaskColor::Red, "red"},
                            {HubTaskColor::Orange, "orange"},
                            {HubTaskColor::Amber, "amber"},
                            {HubTaskColor::Green, "green"},
                            {HubTaskColor::Teal, "teal"},
                            {HubTaskColor::Blue, "blue"},
                            {HubTaskColor::Indigo, "indigo"},
                            {HubTaskColor::Purple, "purple"},
                            {HubTaskColor::Pink, "pink"},
                            {HubTaskColor::Gray, "gray"}});

QString rawString(HubTaskColor color) {
    return rawStrings<HubTaskColor>.nameOf(color);
}

template<>
inline constexpr auto fieldsOf<HubTask> = std::to_array<Field>({
    required<&HubTask::area>("area"),
    defaulted<&HubTask::columnID>("columnID"),
    required<&HubTask::createdAt>("createdAt"),
    required<&HubTask::done>("done"),
    defaulted<&HubTask::dueDate>("dueDate"),
    required<&HubTask::id>("id"),
    defaulted<&HubTask::orderInColumn>("orderInColumn"),
    former<&HubTask::legacyPriority>("priority"),
    required<&HubTask::title>("title"),
    required<&HubTask::updatedAt>("updatedAt"),
});

template<>
inline constexpr auto fieldsOf<HubTaskColumn> = std::to_array<Field>({
    defaulted<&HubTaskColumn::color>("color"),
    defaulted<&HubTaskColumn::createdAt>("createdAt"),
    defaulted<&HubTaskColumn::icon>("icon"),
    required<&HubTaskColumn::id>("id"),
    defaulted<&HubTaskColumn::isCollapsed>("isCollapsed"),
    required<&HubTaskColumn::name>("name"),
});

static void setDefaults(HubTaskColumn& column, Date now) {
    column.createdAt = now;
}

std::optional<std::vector<HubTask>> decodeHubTasks(JsonFile file) {
    return decodedFile<HubTask>(file);
}

QByteArray encode(const std::vector<HubTask>& tasks) {
    return encodedFile(tasks);
}

void encode(const std::vector<HubTask>& tasks, const JsonWriter::Sink& put) {
    encodeFile(tasks, put);
}

std::optional<std::vector<HubTaskColumn>> decodeHubTaskColumns(JsonFile file, Date now) {
    return decodedFile<HubTaskColumn>(file, now);
}

QByteArray encode(const std::vector<HubTaskColumn>& columns) {
    return encodedFile(columns);
}

void encode(const std::vector<HubTaskColumn>& columns, const JsonWriter::Sink& put) {
    encodeFile(columns, put);
}

namespace {

std::vector<HubTaskColumn> firstColumns(Date now) {
    const auto column = [now](const QString& name, const QString& icon, HubTaskColor color) {
        return HubTaskColumn{QUuid::createUuid(), name, icon, color, false, now};
    };
    return {
        column(u"Urgent"_s, u"flame.fill"_s, HubTaskColor::Red),
        column(u"Important"_s, u"star.fill"_s, HubTaskColor::Blue),
        column(u"Soon"_s, u"clock.fill"_s, HubTaskColor::Orange),
        column(u"Later"_s, u"tray.fill"_s, HubTaskColor::Gray),
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
