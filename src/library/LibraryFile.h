#pragma once

#include "library/LibraryStore.h"
#include "library/RecordMerge.h"

#include <optional>
#include <vector>

namespace vorq {

/// A list of the library and its file, with what the file was last known to hold. So what other
/// programs write there meanwhile is taken in and not overwritten. Main thread only.
template<typename Record>
class LibraryFile {
  public:
    /// The store must outlive it.
    explicit LibraryFile(const LibraryStore& store) : m_store(store) {}

    /// The list of the file, empty if it does not read. To one that reads, what of `mine` could
    /// not be written so far is added. `now` is for records of older versions, which have no date.
    [[nodiscard]] std::vector<Record> load(const std::vector<Record>& mine, Date now = {}) {
        m_stamp = m_store.stamp<Record>();
        std::optional<std::vector<Record>> theirs = read(now);
        if (!theirs) {
            m_known.clear();
            return {};
        }
        std::vector<Record> list = holds(mine) ? *theirs : merged(writable(mine), *theirs);
        m_known = *std::move(theirs);
        return list;
    }

    /// The list with the changes of others. Nothing if there are none or they do not read.
    [[nodiscard]] std::optional<std::vector<Record>> takeIn(const std::vector<Record>& mine,
                                                            Date now = {}) {
        const FileStamp stamp = m_store.stamp<Record>();
        if (stamp == m_stamp) return std::nullopt;
        std::optional<std::vector<Record>> theirs = read(now);
        if (!theirs) return std::nullopt;
        m_stamp = stamp;
        std::vector<Record> list = merged(mine, *theirs);
        m_known = *std::move(theirs);
        m_isDue = !holds(list);
        return list;
    }

    /// Writes the list with the changes of others, which is given back if there were any. While
    /// another program holds the library nothing is written; its end is a change to be taken in.
    std::optional<std::vector<Record>> save(const std::vector<Record>& mine, Date now = {}) {
        return save(mine, now, [this](const auto& list) { return m_store.write(list); });
    }

    /// The same, but a file that is already what it would be made is left alone. For a list that
    /// most likely has not changed.
    std::optional<std::vector<Record>> settle(const std::vector<Record>& mine, Date now = {}) {
        return save(mine, now, [this](const auto& list) {
            return m_store.isWritten(list) || m_store.write(list);
        });
    }

    /// Whether a save is due: one that another program kept from writing, or one of a list that has
    /// more than what was just taken in. A save that failed is not tried again by itself.
    [[nodiscard]] bool isDue() const { return m_isDue; }

    /// Whether this list is what the file was last known to hold.
    [[nodiscard]] bool holds(const std::vector<Record>& mine) const {
        return RecordMerge<Record>::areEqual(writable(mine), m_known);
    }

  private:
    static constexpr bool hasDrafts = requires(Record record) { record.isSaved; };

    // Drafts are in memory only, and what comes from the file is none.
    [[nodiscard]] static std::vector<Record> writable(std::vector<Record> list) {
        if constexpr (hasDrafts)
            std::erase_if(list, [](const Record& record) { return !record.isSaved; });
        return list;
    }

    template<typename Write>
    std::optional<std::vector<Record>> save(const std::vector<Record>& mine, Date now,
                                            Write write) {
        const auto lock = m_store.lock();
        m_isDue = !lock;
        if (!lock) return std::nullopt;
        std::optional<std::vector<Record>> list = takeIn(mine, now);
        std::vector<Record> written = writable(list ? *list : mine);
        m_isDue = false;
        if (write(written)) {
            m_stamp = m_store.stamp<Record>();
            m_known = std::move(written);
        }
        return list;
    }

    [[nodiscard]] std::optional<std::vector<Record>> read(Date now) const {
        std::optional<std::vector<Record>> list = m_store.read<Record>(now);
        if constexpr (hasDrafts) {
            if (list)
                for (Record& record : *list)
                    record.isSaved = true;
        }
        return list;
    }

    [[nodiscard]] std::vector<Record> merged(const std::vector<Record>& mine,
                                             const std::vector<Record>& theirs) const {
        return RecordMerge<Record>(m_known, mine, theirs).run();
    }

    const LibraryStore& m_store;
    FileStamp m_stamp;
    std::vector<Record> m_known;
    bool m_isDue = false;
};

} // namespace vorq
