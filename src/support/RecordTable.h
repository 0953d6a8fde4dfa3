#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QVariant>

#include <algorithm>
#include <array>
#include <cstddef>

namespace vorq {

/// The display role of a list that has none.
inline constexpr int noDisplayRole = -1;

template<typename Record>
struct RecordRole {
    int role;
    const char* name;
    QVariant (*value)(const Record& record);
};

/// What views see of a record in a list: its roles, their names and how each is read.
template<typename Record, std::size_t Size>
class RecordTable {
  public:
    consteval RecordTable(int displayRole, const RecordRole<Record> (&roles)[Size])
        : m_displayRole(displayRole), m_roles(std::to_array(roles)) {}

    /// Nothing for a role that is not in the table, but for Qt::DisplayRole, which reads as the
    /// display role.
    [[nodiscard]] QVariant value(const Record& record, int role) const {
        const int wanted = role == Qt::DisplayRole ? m_displayRole : role;
        const auto found = std::ranges::find(m_roles, wanted, &RecordRole<Record>::role);
        return found == m_roles.end() ? QVariant() : found->value(record);
    }

    [[nodiscard]] QHash<int, QByteArray> roleNames() const {
        QHash<int, QByteArray> names;
        for (const RecordRole<Record>& each : m_roles)
            names.insert(each.role, each.name);
        return names;
    }

    /// The roles by which the two read differently.
    [[nodiscard]] QList<int> changedRoles(const Record& before, const Record& after) const {
        QList<int> changed;
        for (const RecordRole<Record>& each : m_roles)
            if (each.value(before) != each.value(after)) changed += each.role;
        return changed;
    }

  private:
    int m_displayRole;
    std::array<RecordRole<Record>, Size> m_roles;
};

/// A table such as recordTable<Note>(TitleRole, {{TitleRole, "title", [](const Note& note) …}}).
template<typename Record, std::size_t Size>
[[nodiscard]] consteval RecordTable<Record, Size>
recordTable(int displayRole, const RecordRole<Record> (&roles)[Size]) {
    return RecordTable<Record, Size>(displayRole, roles);
}

} // namespace vorq
