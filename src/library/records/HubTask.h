#pragma once

#include "library/json/JsonFile.h"
#include "library/records/HubArea.h"
#include "support/Date.h"
#include "support/json/JsonWriter.h"

#include <QByteArray>
#include <QString>
#include <QUuid>

#include <cstdint>
#include <optional>
#include <vector>

namespace vorq {

/// The column of a task by what older versions kept.
enum class HubTaskPriority : std::uint8_t { Urgent, Important, Soon, Later };

enum class HubTaskColor : std::uint8_t {
    Red,
    Orange,
    Amber,
    Green,
    Teal,
    Blue,
    Indigo,
    Purple,
    Pink,
    Gray,
};

/// The name of the case in lower camel case, as it stands in files.
[[nodiscard]] QString rawString(HubTaskColor color);

/// A task of the board.
struct HubTask {
    QUuid id;
    QString title;
    bool done = false;
    std::optional<Date> dueDate; ///< the start of a day stands for the whole day
    HubArea area = HubArea::Personal;
    std::optional<QUuid> columnID;
    double orderInColumn = 0.0;                    ///< the smaller the higher
    std::optional<HubTaskPriority> legacyPriority; ///< read, never written
    Date createdAt;
    Date updatedAt;

    bool operator==(const HubTask&) const = default;
};

/// A column of the board.
struct HubTaskColumn {
    QUuid id;
    QString name; ///< unique within the board
    QString icon = QStringLiteral("square");
    HubTaskColor color = HubTaskColor::Gray;
    bool isCollapsed = false;
    Date createdAt;

    bool operator==(const HubTaskColumn&) const = default;
};

/// All tasks of a file. Nothing if any of it does not fit.
[[nodiscard]] std::optional<std::vector<HubTask>> decodeHubTasks(JsonFile file);
[[nodiscard]] QByteArray encode(const std::vector<HubTask>& tasks);
/// The same piece by piece.
void encode(const std::vector<HubTask>& tasks, const JsonWriter::Sink& put);

/// All columns of a file; those without a date are of now. Nothing if any of it does not fit.
[[nodiscard]] std::optional<std::vector<HubTaskColumn>> decodeHubTaskColumns(JsonFile file,
                                                                             Date now);
[[nodiscard]] QByteArray encode(const std::vector<HubTaskColumn>& columns);
/// The same piece by piece.
void encode(const std::vector<HubTaskColumn>& columns, const JsonWriter::Sink& put);

struct HubTaskBoard {
    std::vector<HubTask> tasks;
    std::vector<HubTaskColumn> columns;

    bool operator==(const HubTaskBoard&) const = default;
};

/// The board with at least its first columns, and with each task in a column at a place of its
/// own. What is in order already stays as it is.
[[nodiscard]] HubTaskBoard migrateHubTasks(std::vector<HubTask> tasks,
                                           std::vector<HubTaskColumn> columns, Date now);

/// Whether `a` stands before `b` on the board. For stable sorting.
[[nodiscard]] bool sortHubTasks(const HubTask& a, const HubTask& b);

} // namespace vorq
