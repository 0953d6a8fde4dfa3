#pragma once

#include "library/store/LibraryStore.h"
#include "library/store/RecordMerge.h"

#include <QHash>
#include <QUuid>

#include <expected>
#include <memory>
#include <utility>
#include <vector>

namespace vorq {

/// The reading of a file of the library and its merge with a list, apart from who holds the two. It
/// works on copies of its own, which share what they hold, so that it may run on any thread.
template<typename Record>
class LibraryLook {
  public:
    using List = std::vector<Record>;

    struct Found {
        int turn = 0;                            ///< of the LibraryFile that asked
        FileStamp stamp;                         ///< of the file, from before it was read
        std::expected<List, ReadFailure> theirs; ///< what it holds
        List merged;                             ///< with the list; empty if it does not read
        bool isAll = false;                      ///< whether the file holds all of that
    };

    /// `known` is what the file was last known to hold. `now` is for records of older versions,
    /// which have no date.
    LibraryLook(int turn, const LibraryStore& store, std::shared_ptr<const List> known, List mine,
                Date now)
        : m_turn(turn),
          m_store(store),
          m_known(std::move(known)),
          m_mine(std::move(mine)),
          m_now(now) {}

    [[nodiscard]] Found run() const {
        const FileStamp stamp = m_store.stamp<Record>();
        Found found{m_turn, stamp, read(m_store, *m_known, m_now), {}, false};
        if (!found.theirs) return found;
        found.merged = RecordMerge<Record>(*m_known, m_mine, *found.theirs).run();
        found.isAll = areWritten(found.merged, *found.theirs);
        return found;
    }

    /// The list of the file. A record that is as it was known becomes a copy of that at once, so
    /// that a list of which little has changed is never in memory twice.
    [[nodiscard]] static std::expected<List, ReadFailure> read(const LibraryStore& store,
                                                               const List& known, Date now) {
        QHash<QUuid, const Record*> byId;
        byId.reserve(static_cast<qsizetype>(known.size()));
        for (const Record& record : known)
            byId.insert(record.id, &record);
        std::expected<List, ReadFailure> list = store.read<Record>(now, [&byId](Record& record) {
            const Record* former = byId.value(record.id);
            if (former && *former == record) record = *former;
        });
        if constexpr (hasDrafts) {
            if (list)
                for (Record& record : *list)
                    record.isSaved = true;
        }
        return list;
    }

    /// What of a list belongs into the file. Drafts are in memory only, and what comes from the
    /// file is none.
    [[nodiscard]] static List writable(List list) {
        if constexpr (hasDrafts)
            std::erase_if(list, [](const Record& record) { return !record.isSaved; });
        return list;
    }

    /// Whether these are all records of the list that belong into the file.
    [[nodiscard]] static bool areWritten(const List& list, const List& written) {
        if constexpr (hasDrafts) return RecordMerge<Record>::areEqual(writable(list), written);
        return RecordMerge<Record>::areEqual(list, written);
    }

  private:
    static constexpr bool hasDrafts = requires(Record record) { record.isSaved; };

    int m_turn;
    LibraryStore m_store;
    std::shared_ptr<const List> m_known;
    List m_mine;
    Date m_now;
};

} // namespace vorq
