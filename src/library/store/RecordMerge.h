#pragma once

#include <QHash>
#include <QUuid>

#include <cstddef>
#include <utility>
#include <vector>

namespace vorq {

/// Two versions of a list of records made one, by the ids of the records and what both versions
/// were before. What one side added, changed, removed or put in order is taken from it. A change
/// weighs more than a removal. Of a record that both changed, theirs is kept beside ours under an
/// id of its own.
template<typename Record>
class RecordMerge {
  public:
    /// The lists must outlive the merge.
    RecordMerge(const std::vector<Record>& known, const std::vector<Record>& mine,
                const std::vector<Record>& theirs)
        : m_known(known), m_mine(mine), m_theirs(theirs) {}

    [[nodiscard]] std::vector<Record> run() const {
        const bool isMyOrder = inBoth(m_mine, m_known) != inBoth(m_known, m_mine);
        std::vector<Record> merged;
        for (const Key& key : isMyOrder ? woven(m_mine, m_theirs) : woven(m_theirs, m_mine))
            append(key, merged);
        return merged;
    }

    /// Whether the records are the same once they are written.
    [[nodiscard]] static bool areEqual(const Record& a, const Record& b) {
        return a == b || encode(std::vector{a}) == encode(std::vector{b});
    }

    /// Whether the lists hold the same records, in any order.
    [[nodiscard]] static bool areEqual(const std::vector<Record>& a, const std::vector<Record>& b) {
        if (a.size() != b.size()) return false;
        const Version known(b);
        const Version held(a);
        for (const Key& key : held.keys) {
            const Record* other = known.find(key);
            if (!other || !areEqual(*held.find(key), *other)) return false;
        }
        return true;
    }

  private:
    // Records of equal id are told apart by their order.
    using Key = std::pair<QUuid, int>;

    struct Version {
        explicit Version(const std::vector<Record>& records) {
            QHash<QUuid, int> seen;
            keys.reserve(records.size());
            for (const Record& record : records) {
                const Key key(record.id, seen[record.id]++);
                keys.push_back(key);
                byKey.insert(key, &record);
            }
        }
        [[nodiscard]] const Record* find(const Key& key) const { return byKey.value(key); }

        std::vector<Key> keys;
        QHash<Key, const Record*> byKey;
    };

    [[nodiscard]] static std::vector<Key> inBoth(const Version& one, const Version& other) {
        std::vector<Key> keys;
        for (const Key& key : one.keys)
            if (other.find(key)) keys.push_back(key);
        return keys;
    }

    // All keys of both, those of the one in their order. What only the other has follows what it
    // follows there.
    [[nodiscard]] static std::vector<Key> woven(const Version& one, const Version& other) {
        std::vector<Key> keys;
        QHash<Key, std::vector<Key>> followers;
        Key last;
        bool hasLast = false;
        for (const Key& key : other.keys) {
            if (one.find(key)) {
                last = key;
                hasLast = true;
            } else {
                (hasLast ? followers[last] : keys).push_back(key);
            }
        }
        for (const Key& key : one.keys) {
            keys.push_back(key);
            for (const Key& follower : followers.value(key))
                keys.push_back(follower);
        }
        return keys;
    }

    void append(const Key& key, std::vector<Record>& merged) const {
        const Record* known = m_known.find(key);
        const Record* mine = m_mine.find(key);
        const Record* theirs = m_theirs.find(key);
        const bool isMine = mine && !(known && areEqual(*mine, *known));
        const bool isTheirs = theirs && !(known && areEqual(*theirs, *known));
        if (!mine || !theirs) {
            if (isMine) merged.push_back(*mine);
            if (isTheirs) merged.push_back(*theirs);
            return;
        }
        merged.push_back(isTheirs && !isMine ? *theirs : *mine);
        if (!isMine || !isTheirs || areEqual(*mine, *theirs)) return;
        merged.push_back(*theirs);
        merged.back().id = QUuid::createUuid();
    }

    const Version m_known;
    const Version m_mine;
    const Version m_theirs;
};

} // namespace vorq
