#include "library/store/LibraryStore.h"

#include "library/store/LibraryLog.h"
#include "support/files/DamagedFile.h"
#include "support/files/DurableFile.h"
#include "support/files/DurableFolder.h"

#include <QDir>
#include <QFileInfo>

#include <array>
#include <concepts>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr QStringView tasksFile = u"hub-tasks.json";
constexpr QStringView taskColumnsFile = u"hub-task-columns.json";
constexpr QStringView trackersFile = u"hub-trackers.json";
constexpr std::array allFiles = {LibraryStore::notesFile,   LibraryStore::chatsFile,
                                 LibraryStore::aiChatsFile, tasksFile,
                                 taskColumnsFile,           trackersFile};

template<typename Record>
constexpr QStringView fileOf = {};
template<>
constexpr QStringView fileOf<SavedNote> = LibraryStore::notesFile;
template<>
constexpr QStringView fileOf<SavedChat> = LibraryStore::chatsFile;
template<>
constexpr QStringView fileOf<HubAIChat> = LibraryStore::aiChatsFile;
template<>
constexpr QStringView fileOf<HubTask> = tasksFile;
template<>
constexpr QStringView fileOf<HubTaskColumn> = taskColumnsFile;
template<>
constexpr QStringView fileOf<HubTracker> = trackersFile;

template<typename Record>
std::optional<std::vector<Record>> decoded(JsonFile file, [[maybe_unused]] Date now,
                                           [[maybe_unused]] const RecordHook<Record>& hook) {
    if constexpr (std::same_as<Record, SavedNote>) return decodeSavedNotes(std::move(file), hook);
    if constexpr (std::same_as<Record, SavedChat>) return decodeSavedChats(std::move(file), hook);
    if constexpr (std::same_as<Record, HubAIChat>) return decodeHubAIChats(std::move(file), hook);
    if constexpr (std::same_as<Record, HubTask>) return decodeHubTasks(std::move(file));
    if constexpr (std::same_as<Record, HubTaskColumn>)
        return decodeHubTaskColumns(std::move(file), now);
    if constexpr (std::same_as<Record, HubTracker>) return decodeHubTrackers(std::move(file), now);
}

template<typename Record>
std::vector<Record> readOrEmpty(const LibraryStore& store, Date now = {}) {
    static_cast<void>(ensureFolder(store.folder()));
    auto list = store.read<Record>(now);
    return list ? *std::move(list) : std::vector<Record>();
}

} // namespace

LibraryStore::LibraryStore(const QString& applicationSupportFolder,
                           std::chrono::milliseconds patience)
    : m_folder(folderIn(applicationSupportFolder)), m_patience(patience) {}

QString LibraryStore::folderIn(const QString& applicationSupportFolder) {
    return (applicationSupportFolder.isEmpty() ? QDir::tempPath() : applicationSupportFolder) +
           u"/Vorq/Library"_s;
}

QString LibraryStore::path(QStringView fileName) const {
    return m_folder + u'/' + fileName.toString();
}

template<typename Record>
QString LibraryStore::path() const {
    return path(fileOf<Record>);
}

std::optional<FolderLock> LibraryStore::lock(std::chrono::milliseconds patience) const {
    // Why it cannot be made, the write tells.
    static_cast<void>(ensureFolder(m_folder));
    return FolderLock::take(m_folder, patience);
}

template<typename Record>
std::expected<std::vector<Record>, ReadFailure>
LibraryStore::read(Date now, const RecordHook<Record>& hook) const {
    auto file = JsonFile::open(path<Record>());
    if (!file) return std::unexpected(file.error());
    auto list = decoded<Record>(*std::move(file), now, hook);
    if (!list) return std::unexpected(ReadFailure{ReadFailure::Kind::Damaged, {}});
    return *std::move(list);
}

// A program that only reads removes nothing.
template<typename Record>
std::expected<FileStamp, SaveFailure> LibraryStore::write(const std::vector<Record>& list) const {
    const auto failure = [](const QString& reason) { return SaveFailure{false, reason}; };
    if (const auto folder = ensureFolder(m_folder); !folder)
        return std::unexpected(failure(folder.error()));
    if (!std::exchange(m_hasSaved, true)) {
        for (const QStringView name : allFiles)
            removeLeftovers(path(name));
    }
    const auto written =
        replaceFile(path<Record>(), [&list](const JsonWriter::Sink& put) { encode(list, put); });
    if (!written) return std::unexpected(failure(written.error()));
    return *written;
}

template<typename Record>
bool LibraryStore::isWritten(const std::vector<Record>& list) const {
    return holdsContent(path<Record>(),
                        [&list](const JsonWriter::Sink& put) { encode(list, put); });
}

template<typename Record>
FileStamp LibraryStore::stamp() const {
    return fileStamp(path<Record>());
}

template<typename Record>
std::expected<QString, SaveFailure> LibraryStore::keepDamaged() const {
    const auto kept = keepDamagedFile(path<Record>());
    if (!kept) return std::unexpected(SaveFailure{false, kept.error()});
    if (!kept->isEmpty())
        qCWarning(libraryLog, "Vorq cannot read %s; it is kept as %s.",
                  qUtf8Printable(path<Record>()), qUtf8Printable(*kept));
    return QFileInfo(*kept).fileName();
}

std::vector<SavedNote> LibraryStore::loadNotes() const {
    return readOrEmpty<SavedNote>(*this);
}

std::vector<SavedChat> LibraryStore::loadChats() const {
    return readOrEmpty<SavedChat>(*this);
}

std::vector<HubAIChat> LibraryStore::loadAIChats() const {
    return readOrEmpty<HubAIChat>(*this);
}

std::vector<HubTask> LibraryStore::loadTasks() const {
    return readOrEmpty<HubTask>(*this);
}

std::vector<HubTaskColumn> LibraryStore::loadTaskColumns(Date now) const {
    return readOrEmpty<HubTaskColumn>(*this, now);
}

std::vector<HubTracker> LibraryStore::loadTrackers(Date now) const {
    return readOrEmpty<HubTracker>(*this, now);
}

void LibraryStore::save(const std::vector<SavedNote>& notes) const {
    static_cast<void>(write(notes));
}

void LibraryStore::save(const std::vector<SavedChat>& chats) const {
    static_cast<void>(write(chats));
}

void LibraryStore::save(const std::vector<HubAIChat>& chats) const {
    static_cast<void>(write(chats));
}

void LibraryStore::save(const std::vector<HubTask>& tasks) const {
    static_cast<void>(write(tasks));
}

void LibraryStore::save(const std::vector<HubTaskColumn>& columns) const {
    static_cast<void>(write(columns));
}

void LibraryStore::save(const std::vector<HubTracker>& trackers) const {
    static_cast<void>(write(trackers));
}

template std::expected<std::vector<SavedNote>, ReadFailure>
LibraryStore::read(Date, const RecordHook<SavedNote>&) const;
template std::expected<FileStamp, SaveFailure>
LibraryStore::write(const std::vector<SavedNote>&) const;
template bool LibraryStore::isWritten(const std::vector<SavedNote>&) const;
template FileStamp LibraryStore::stamp<SavedNote>() const;
template std::expected<QString, SaveFailure> LibraryStore::keepDamaged<SavedNote>() const;
template QString LibraryStore::path<SavedNote>() const;
template std::expected<std::vector<SavedChat>, ReadFailure>
LibraryStore::read(Date, const RecordHook<SavedChat>&) const;
template std::expected<FileStamp, SaveFailure>
LibraryStore::write(const std::vector<SavedChat>&) const;
template bool LibraryStore::isWritten(const std::vector<SavedChat>&) const;
template FileStamp LibraryStore::stamp<SavedChat>() const;
template std::expected<QString, SaveFailure> LibraryStore::keepDamaged<SavedChat>() const;
template QString LibraryStore::path<SavedChat>() const;
template std::expected<std::vector<HubAIChat>, ReadFailure>
LibraryStore::read(Date, const RecordHook<HubAIChat>&) const;
template std::expected<FileStamp, SaveFailure>
LibraryStore::write(const std::vector<HubAIChat>&) const;
template bool LibraryStore::isWritten(const std::vector<HubAIChat>&) const;
template FileStamp LibraryStore::stamp<HubAIChat>() const;
template std::expected<QString, SaveFailure> LibraryStore::keepDamaged<HubAIChat>() const;
template QString LibraryStore::path<HubAIChat>() const;
template std::expected<std::vector<HubTask>, ReadFailure>
LibraryStore::read(Date, const RecordHook<HubTask>&) const;
template std::expected<FileStamp, SaveFailure>
LibraryStore::write(const std::vector<HubTask>&) const;
template bool LibraryStore::isWritten(const std::vector<HubTask>&) const;
template FileStamp LibraryStore::stamp<HubTask>() const;
template std::expected<QString, SaveFailure> LibraryStore::keepDamaged<HubTask>() const;
template QString LibraryStore::path<HubTask>() const;
template std::expected<std::vector<HubTaskColumn>, ReadFailure>
LibraryStore::read(Date, const RecordHook<HubTaskColumn>&) const;
template std::expected<FileStamp, SaveFailure>
LibraryStore::write(const std::vector<HubTaskColumn>&) const;
template bool LibraryStore::isWritten(const std::vector<HubTaskColumn>&) const;
template FileStamp LibraryStore::stamp<HubTaskColumn>() const;
template std::expected<QString, SaveFailure> LibraryStore::keepDamaged<HubTaskColumn>() const;
template QString LibraryStore::path<HubTaskColumn>() const;
template std::expected<std::vector<HubTracker>, ReadFailure>
LibraryStore::read(Date, const RecordHook<HubTracker>&) const;
template std::expected<FileStamp, SaveFailure>
LibraryStore::write(const std::vector<HubTracker>&) const;
template bool LibraryStore::isWritten(const std::vector<HubTracker>&) const;
template FileStamp LibraryStore::stamp<HubTracker>() const;
template std::expected<QString, SaveFailure> LibraryStore::keepDamaged<HubTracker>() const;
template QString LibraryStore::path<HubTracker>() const;

} // namespace vorq
