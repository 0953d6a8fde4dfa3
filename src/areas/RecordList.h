#pragma once

#include <QAbstractListModel>
#include <QSet>
#include <QUuid>

#include <algorithm>
#include <vector>

namespace vorq {

/// What all lists of records are to their views. Main thread only.
class RecordListModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY changed)

  public:
    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] int count() const { return rowCount(); }

  signals:
    /// After any change of the list or of one of its records, whether or not a role shows it.
    void changed();

  protected:
    /// Tells views of a row whose record has changed, by the roles that read differently.
    void tellChange(int row, const QList<int>& roles);
};

/// Records as a list model that tells exactly what changed; no change resets it. Whoever hears of
/// a change must not change the list in turn before changed().
template<typename Record>
class RecordList : public RecordListModel {
  public:
    using RecordListModel::RecordListModel;

    [[nodiscard]] const std::vector<Record>& records() const { return m_records; }

    /// Nothing if no record has the id. Valid until the next change.
    [[nodiscard]] const Record* find(const QUuid& id) const {
        const auto found = std::ranges::find(m_records, id, &Record::id);
        return found == m_records.end() ? nullptr : &*found;
    }

    void insertFirst(Record record) {
        std::vector<Record> one;
        one.push_back(std::move(record));
        insert(0, one, 0);
        emit changed();
    }

    /// Changes the first record of the id in place. False if there is none.
    template<typename Change>
    bool edit(const QUuid& id, Change change) {
        const auto found = std::ranges::find(m_records, id, &Record::id);
        if (found == m_records.end()) return false;
        Record record = *found;
        change(record);
        if (assign(static_cast<std::size_t>(found - m_records.begin()), std::move(record)))
            emit changed();
        return true;
    }

    /// Removes every record of the id.
    void removeAll(const QUuid& id) {
        if (removeIf([&id](const Record& record) { return record.id == id; })) emit changed();
    }

    /// Becomes this list by removing, moving, inserting and changing no more rows than it must.
    void replace(std::vector<Record> records) {
        QSet<QUuid> wanted;
        for (const Record& record : records)
            wanted.insert(record.id);
        bool isChanged =
            removeIf([&wanted](const Record& record) { return !wanted.contains(record.id); });
        QSet<QUuid> held;
        for (const Record& record : m_records)
            held.insert(record.id);
        for (std::size_t row = 0; row < records.size(); ++row) {
            if (row == m_records.size()) {
                insert(row, records, row);
                isChanged = true;
                break;
            }
            if (m_records[row].id != records[row].id) {
                bringTo(row, records[row], held);
                isChanged = true;
            }
            if (assign(row, std::move(records[row]))) isChanged = true;
        }
        if (m_records.size() > records.size()) {
            remove(records.size(), m_records.size());
            isChanged = true;
        }
        if (isChanged) emit changed();
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_records.size());
    }

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
            return {};
        return value(m_records[static_cast<std::size_t>(index.row())], role);
    }

  protected:
    /// What a record is under one of the roles of roleNames(); nothing for any other.
    [[nodiscard]] virtual QVariant value(const Record& record, int role) const = 0;

  private:
    // Inserts `records` from the one at `first` on.
    void insert(std::size_t row, std::vector<Record>& records, std::size_t first) {
        const std::size_t count = records.size() - first;
        beginInsertRows({}, static_cast<int>(row), static_cast<int>(row + count - 1));
        m_records.insert(
            m_records.begin() + static_cast<std::ptrdiff_t>(row),
            std::make_move_iterator(records.begin() + static_cast<std::ptrdiff_t>(first)),
            std::make_move_iterator(records.end()));
        endInsertRows();
    }

    void remove(std::size_t first, std::size_t end) {
        beginRemoveRows({}, static_cast<int>(first), static_cast<int>(end - 1));
        m_records.erase(m_records.begin() + static_cast<std::ptrdiff_t>(first),
                        m_records.begin() + static_cast<std::ptrdiff_t>(end));
        endRemoveRows();
    }

    // Removes in runs, from the last to the first.
    template<typename Condemned>
    bool removeIf(Condemned isCondemned) {
        const std::size_t before = m_records.size();
        for (std::size_t end = before; end > 0; --end) {
            if (!isCondemned(m_records[end - 1])) continue;
            std::size_t first = end - 1;
            while (first > 0 && isCondemned(m_records[first - 1]))
                --first;
            remove(first, end);
            end = first + 1;
        }
        return m_records.size() != before;
    }

    // Puts a record of this id at the row: the one that is further down, else this one.
    void bringTo(std::size_t row, const Record& record, const QSet<QUuid>& held) {
        const auto place = m_records.begin() + static_cast<std::ptrdiff_t>(row);
        const auto found = held.contains(record.id)
                               ? std::ranges::find(place, m_records.end(), record.id, &Record::id)
                               : m_records.end();
        if (found == m_records.end()) {
            std::vector<Record> one = {record};
            return insert(row, one, 0);
        }
        const int from = static_cast<int>(found - m_records.begin());
        beginMoveRows({}, from, from, {}, static_cast<int>(row));
        std::rotate(place, found, found + 1);
        endMoveRows();
    }

    bool assign(std::size_t row, Record record) {
        if (m_records[row] == record) return false;
        QList<int> roles;
        const QList<int> known = roleNames().keys();
        for (const int role : known)
            if (value(m_records[row], role) != value(record, role)) roles += role;
        m_records[row] = std::move(record);
        tellChange(static_cast<int>(row), roles);
        return true;
    }

    std::vector<Record> m_records;
};

} // namespace vorq
