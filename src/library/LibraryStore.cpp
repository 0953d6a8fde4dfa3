#include "library/LibraryStore.h"

#include "support/DurableFile.h"

#include <QDir>

#include <array>
#include <concepts>
#include <utility>

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
std::optional<std::vector<Record>> decoded(JsonFile file, Date now) {
    if constexpr (std::same_as<Record, SavedNote>) return decodeSavedNotes(std::move(file));
    if constexpr (std::same_as<Record, SavedChat>) return decodeSavedChats(std::move(file));
    if constexpr (std::same_as<Record, HubAIChat>) return decodeHubAIChats(std::move(file));
    if constexpr (std::same_as<Record, HubTask>) return decodeHubTasks(std::move(file));
    if constexpr (std::same_as<Record, HubTaskColumn>)
        return decodeHubTaskColumns(std::move(file), now);
    if constexpr (std::same_as<Record, HubTracker>) return decodeHubTrackers(std::move(file), now);
}

template<typename Record>
std::vector<Record> readOrEmpty(const LibraryStore& store, Date now = {}) {
    auto list = store.read<Record>(now);
    return list ? *std::move(list) : std::vector<Record>();
}

} // namespace

LibraryStore::LibraryStore(const QString& applicationSupportFolder,
                           std::chrono::milliseconds patience)
    : m_folder(folderIn(applicationSupportFolder)), m_patience(patience) {}

QString LibraryStore::folderIn(const QString& applicationSupportFolder) {
    return (applicationSupportFolder.isEmpty() ? QDir::tempPath() : applicationSupportFolder) +
           QStringLiteral("/Vorq/Library");
}

QString LibraryStore::path(QStringView fileName) const {
    QDir().mkpath(m_folder);
    return m_folder + u'/' + fileName.toString();
}

std::optional<FolderLock> LibraryStore::lock() const {
    QDir().mkpath(m_folder);
    return FolderLock::take(m_folder, m_patience);
}

template<typename Record>
std::optional<std::vector<Record>> LibraryStore::read(Date now) const {
    return decoded<Record>(JsonFile::open(path(fileOf<Record>)), now);
}

// A program that only reads removes nothing.
template<typename Record>
bool LibraryStore::write(const std::vector<Record>& list) const {
    if (!std::exchange(m_hasSaved, true)) {
        for (const QStringView name : allFiles)
            removeLeftovers(path(name));
    }
    return replaceFile(path(fileOf<Record>),
                       [&list](const JsonWriter::Sink& put) { encode(list, put); });
}

template<typename Record>
bool LibraryStore::isWritten(const std::vector<Record>& list) const {
    return holdsContent(path(fileOf<Record>),
                        [&list](const JsonWriter::Sink& put) { encode(list, put); });
}

template<typename Record>
FileStamp LibraryStore::stamp() const {
    return fileStamp(path(fileOf<Record>));
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
    write(notes);
}

void LibraryStore::save(const std::vector<SavedChat>& chats) const {
    write(chats);
}

void LibraryStore::save(const std::vector<HubAIChat>& chats) const {
    write(chats);
}

void LibraryStore::save(const std::vector<HubTask>& tasks) const {
    write(tasks);
}

void LibraryStore::save(const std::vector<HubTaskColumn>& columns) const {
    write(columns);
}

void LibraryStore::save(const std::vector<HubTracker>& trackers) const {
    write(trackers);
}

template std::optional<std::vector<SavedNote>> LibraryStore::read(Date) const;
template bool LibraryStore::write(const std::vector<SavedNote>&) const;
template bool LibraryStore::isWritten(const std::vector<SavedNote>&) const;
template FileStamp LibraryStore::stamp<SavedNote>() const;
template std::optional<std::vector<SavedChat>> LibraryStore::read(Date) const;
template bool LibraryStore::write(const std::vector<SavedChat>&) const;
template bool LibraryStore::isWritten(const std::vector<SavedChat>&) const;
template FileStamp LibraryStore::stamp<SavedChat>() const;
template std::optional<std::vector<HubAIChat>> LibraryStore::read(Date) const;
template bool LibraryStore::write(const std::vector<HubAIChat>&) const;
template bool LibraryStore::isWritten(const std::vector<HubAIChat>&) const;
template FileStamp LibraryStore::stamp<HubAIChat>() const;
template std::optional<std::vector<HubTask>> LibraryStore::read(Date) const;
template bool LibraryStore::write(const std::vector<HubTask>&) const;
template bool LibraryStore::isWritten(const std::vector<HubTask>&) const;
template FileStamp LibraryStore::stamp<HubTask>() const;
template std::optional<std::vector<HubTaskColumn>> LibraryStore::read(Date) const;
template bool LibraryStore::write(const std::vector<HubTaskColumn>&) const;
template bool LibraryStore::isWritten(const std::vector<HubTaskColumn>&) const;
template FileStamp LibraryStore::stamp<HubTaskColumn>() const;
template std::optional<std::vector<HubTracker>> LibraryStore::read(Date) const;
template bool LibraryStore::write(const std::vector<HubTracker>&) const;
template bool LibraryStore::isWritten(const std::vector<HubTracker>&) const;
template FileStamp LibraryStore::stamp<HubTracker>() const;

} // namespace vorq
