#pragma once

#include "library/store/LibraryLook.h"

#include <QCoreApplication>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace vorq {

/// A list of the library and its file, with what the file was last known to hold. So what other
/// programs write there meanwhile is merged and not overwritten, and a file that holds less than
/// memory because it was damaged costs nothing. Main thread only.
template<typename Record>
class LibraryFile {
  public:
    using List = std::vector<Record>;
    using Look = LibraryLook<Record>;

    /// The store must outlive it.
    explicit LibraryFile(const LibraryStore& store) : m_store(store) {}

    /// The list of the file with what of `mine` could not be written so far; `mine` if it does not
    /// read. `now` is for records of older versions, which have no date.
    [[nodiscard]] List load(const List& mine, Date now = {}) {
        ++m_turn;
        const FileStamp stamp = m_store.stamp<Record>();
        const bool isAnew = m_isGone;
        std::expected<List, ReadFailure> theirs = Look::read(m_store, *m_known, now);
        if (!theirs) {
            noteUnread(stamp, theirs.error());
            return Look::writable(mine);
        }
        List list = !isAnew && holds(mine)
                        ? *theirs
                        : RecordMerge<Record>(*base(), Look::writable(mine), *theirs).run();
        const bool isAll = Look::areWritten(list, *theirs);
        noteRead(stamp, *std::move(theirs), isAll);
        if (isAnew && !isAll)
            m_unsaved = SaveFailure{false, QCoreApplication::translate(
                                               "LibraryFile", "the file was made anew meanwhile")};
        return list;
    }

    /// The list with the changes of others. Nothing if there are none or they do not read.
    [[nodiscard]] std::optional<List> takeIn(const List& mine, Date now = {}) {
        const std::optional<Look> changes = look(mine, now);
        return changes ? takeIn(changes->run()) : std::nullopt;
    }

    // The same in steps, of which another thread may do the second, which takes long: a look, its
    // run, and what it found.

    /// Nothing if the file is as it was last known.
    [[nodiscard]] std::optional<Look> look(const List& mine, Date now = {}) {
        if (m_store.stamp<Record>() == m_stamp) {
            m_unread.reset();
            return std::nullopt;
        }
        return Look(m_turn, m_store, base(), mine, now);
    }

    /// Whether the file has neither been taken in nor written since the look was asked for. If so,
    /// what it found does not count any more.
    [[nodiscard]] bool isCurrent(const Look::Found& found) const { return found.turn == m_turn; }

    /// For the list that was looked at, and what is current.
    [[nodiscard]] std::optional<List> takeIn(Look::Found found) {
        ++m_turn;
        if (!found.theirs) {
            noteUnread(found.stamp, found.theirs.error());
            return std::nullopt;
        }
        noteRead(found.stamp, *std::move(found.theirs), found.isAll);
        m_isDue = !found.isAll;
        return std::move(found.merged);
    }

    /// Writes the list with the changes of others, which is given back if there were any. While
    /// another program holds the library nothing is written; its end is a change to be taken in.
    std::optional<List> save(const List& mine, Date now = {}) {
        return save(m_store.lock(), mine, now,
                    [this](const List& list) { return m_store.write(list); });
    }

    /// The same, but a file that is already what it would be made is left alone. For a list that
    /// most likely has not changed.
    std::optional<List> settle(const List& mine, Date now = {}) {
        return save(m_store.lock(), mine, now,
                    [this](const List& list) -> std::expected<FileStamp, SaveFailure> {
                        const FileStamp stamp = m_store.stamp<Record>();
                        if (m_store.isWritten(list)) return stamp;
                        return m_store.write(list);
                    });
    }

    /// Tries again what is unsaved, with so much patience for other programs. A damaged file that
    /// has changed since the try before may still be on its way, and is only looked at unless this
    /// is the last try.
    std::optional<List> retry(const List& mine, std::chrono::milliseconds patience, bool isLast,
                              Date now = {}) {
        if (!m_unsaved) return std::nullopt;
        const FileStamp stamp = m_store.stamp<Record>();
        if (m_unread && !isLast && std::exchange(m_triedStamp, stamp) != stamp)
            return takeIn(mine, now);
        return save(m_store.lock(patience), mine, now,
                    [this](const List& list) { return m_store.write(list); });
    }

    /// Whether a save is due: one that another program kept from writing, or one of a list that has
    /// more than what was just taken in. A save that failed is for retry().
    [[nodiscard]] bool isDue() const { return m_isDue; }

    /// Why the file is not what it should be, until it is: the latest save failed, or what it held
    /// is in memory alone.
    [[nodiscard]] const std::optional<SaveFailure>& unsaved() const { return m_unsaved; }

    /// Why the file did not read when it was last looked at; nothing if it did.
    [[nodiscard]] const std::optional<ReadFailure>& unread() const { return m_unread; }

    /// What was replaced although it did not read; told once.
    [[nodiscard]] std::optional<ReplacedFile> releaseReplaced() {
        return std::exchange(m_replaced, std::nullopt);
    }

    /// Whether this list is what the file was last known to hold.
    [[nodiscard]] bool holds(const List& mine) const { return Look::areWritten(mine, *m_known); }

  private:
    template<typename Write>
    std::optional<List> save(const std::optional<FolderLock>& lock, const List& mine, Date now,
                             Write write) {
        ++m_turn;
        m_isDue = !lock;
        if (!lock) {
            m_unsaved = SaveFailure{
                true,
                QCoreApplication::translate("LibraryFile", "another program is using the library")};
            return std::nullopt;
        }
        std::optional<List> list = takeIn(mine, now);
        m_isDue = false;
        List written = Look::writable(list ? *list : mine);
        std::expected<FileStamp, SaveFailure> outcome;
        if (const auto kept = keepUnread(); kept)
            outcome = write(written);
        else
            outcome = std::unexpected(kept.error());
        if (!outcome) {
            m_unsaved = outcome.error();
            return list;
        }
        m_stamp = *outcome;
        m_known = std::make_shared<const List>(std::move(written));
        m_isGone = false;
        if (m_kept) m_replaced = std::exchange(m_kept, std::nullopt);
        m_unread.reset();
        m_unsaved.reset();
        return list;
    }

    // What a list is merged against. What a file made anew lacks, nobody has removed from it.
    [[nodiscard]] std::shared_ptr<const List> base() const {
        return m_isGone ? std::make_shared<const List>() : m_known;
    }

    // What does not read is kept before it is replaced.
    [[nodiscard]] std::expected<void, SaveFailure> keepUnread() {
        if (!m_unread || m_keptStamp == m_unreadStamp) return {};
        std::expected<QString, SaveFailure> kept = m_store.keepDamaged<Record>();
        if (!kept) return std::unexpected(kept.error());
        m_keptStamp = m_unreadStamp;
        if (!kept->isEmpty()) m_kept = ReplacedFile{*m_unread, *std::move(kept)};
        return {};
    }

    void noteUnread(const FileStamp& stamp, const ReadFailure& failure) {
        m_unread = failure;
        m_unreadStamp = stamp;
        if (failure.kind == ReadFailure::Kind::Missing) m_isGone = true;
        if (failure.kind == ReadFailure::Kind::Damaged && !m_known->empty() && !m_unsaved)
            m_unsaved = SaveFailure{
                false, QCoreApplication::translate("LibraryFile", "the file is damaged")};
    }

    void noteRead(const FileStamp& stamp, List theirs, bool isAll) {
        m_stamp = stamp;
        m_unread.reset();
        m_kept.reset();
        m_isGone = false;
        m_known = std::make_shared<const List>(std::move(theirs));
        if (isAll) m_unsaved.reset();
    }

    const LibraryStore& m_store;
    FileStamp m_stamp;
    std::shared_ptr<const List> m_known = std::make_shared<const List>();
    int m_turn = 0; // rises with all that is read or written
    bool m_isDue = false;
    bool m_isGone = false; // the file, since it was known
    std::optional<SaveFailure> m_unsaved;
    std::optional<ReadFailure> m_unread;
    FileStamp m_unreadStamp;            // of the file that did not read
    FileStamp m_triedStamp;             // of the file at the latest retry() while it did not read
    FileStamp m_keptStamp;              // of the file that was kept
    std::optional<ReplacedFile> m_kept; // to be replaced
    std::optional<ReplacedFile> m_replaced;
};

} // namespace vorq
