#pragma once

#include "library/records/HubAIChat.h"
#include "library/records/HubTask.h"
#include "library/records/HubTracker.h"
#include "library/records/SavedChat.h"
#include "library/records/SavedNote.h"
#include "support/files/FileStamp.h"
#include "support/files/FolderLock.h"

#include <QString>

#include <chrono>
#include <expected>
#include <optional>
#include <vector>

namespace vorq {

/// Why a list is not written.
struct SaveFailure {
    bool isHeldUp = false; ///< by another program
    QString reason;        ///< for within a sentence
};

/// The files of the user's library, each the whole of its list. Main thread only.
///
/// The plain loads and saves never fail: a file that is missing, unreadable or not in order loads
/// as an empty list and is left where it is, and a save that fails leaves the former file. A file
/// is replaced at once and only when the new one is on the disk; behind a symbolic link that is the
/// file it leads to. The first save also removes what killed saves have left.
class LibraryStore {
  public:
    /// The files are in "Vorq/Library" under the user's folder for application data, or under the
    /// folder for temporary files if that is empty.
    explicit LibraryStore(const QString& applicationSupportFolder,
                          std::chrono::milliseconds patience = briefly);
    /// How long a save waits for other programs that write to the library.
    static constexpr std::chrono::milliseconds briefly{500};

    [[nodiscard]] const QString& folder() const { return m_folder; }

    // The folder of the library and names of its files, for callers that only read; none need
    // exist.
    [[nodiscard]] static QString folderIn(const QString& applicationSupportFolder);
    static constexpr QStringView notesFile = u"saved-notes.json";
    static constexpr QStringView chatsFile = u"saved-chats.json";
    static constexpr QStringView aiChatsFile = u"hub-ai-chats.json";

    [[nodiscard]] std::vector<SavedNote> loadNotes() const;
    [[nodiscard]] std::vector<SavedChat> loadChats() const;
    [[nodiscard]] std::vector<HubAIChat> loadAIChats() const;
    [[nodiscard]] std::vector<HubTask> loadTasks() const;
    /// `now` is for records of older versions, which have no date.
    [[nodiscard]] std::vector<HubTaskColumn> loadTaskColumns(Date now) const;
    [[nodiscard]] std::vector<HubTracker> loadTrackers(Date now) const;

    void save(const std::vector<SavedNote>& notes) const;
    void save(const std::vector<SavedChat>& chats) const;
    /// Of these the caller gives only those that are saved.
    void save(const std::vector<HubAIChat>& chats) const;
    void save(const std::vector<HubTask>& tasks) const;
    void save(const std::vector<HubTaskColumn>& columns) const;
    void save(const std::vector<HubTracker>& trackers) const;

    // For each kind of record that has a file, with the outcome:

    /// Makes no folder. The hook is called with notes and chats only.
    template<typename Record>
    [[nodiscard]] std::expected<std::vector<Record>, ReadFailure>
    read(Date now = {}, const RecordHook<Record>& hook = {}) const;
    /// Gives the stamp of the written file, whatever others have made of it since.
    template<typename Record>
    std::expected<FileStamp, SaveFailure> write(const std::vector<Record>& list) const;
    /// Whether the file is what a save of this list would make of it.
    template<typename Record>
    [[nodiscard]] bool isWritten(const std::vector<Record>& list) const;
    template<typename Record>
    [[nodiscard]] FileStamp stamp() const;
    /// Keeps a file that does not read beside the one that is about to replace it, and gives its
    /// name; "" if it holds nothing.
    template<typename Record>
    [[nodiscard]] std::expected<QString, SaveFailure> keepDamaged() const;
    template<typename Record>
    [[nodiscard]] QString path() const;

    /// Keeps other programs from writing to the library; nothing if one does not let go of it in
    /// that time.
    [[nodiscard]] std::optional<FolderLock> lock(std::chrono::milliseconds patience) const;
    [[nodiscard]] std::optional<FolderLock> lock() const { return lock(m_patience); }

  private:
    [[nodiscard]] QString path(QStringView fileName) const;

    QString m_folder;
    std::chrono::milliseconds m_patience;
    mutable bool m_hasSaved = false;
};

} // namespace vorq
