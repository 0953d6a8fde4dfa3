#include "library/LibraryStore.h"

#include "support/DurableFile.h"

#include <QDir>

#include <array>
#include <utility>

namespace vorq {
namespace {

constexpr QStringView tasksFile = u"hub-tasks.json";
constexpr QStringView taskColumnsFile = u"hub-task-columns.json";
constexpr QStringView trackersFile = u"hub-trackers.json";
constexpr std::array allFiles = {LibraryStore::notesFile,   LibraryStore::chatsFile,
                                 LibraryStore::aiChatsFile, tasksFile,
                                 taskColumnsFile,           trackersFile};

template<typename List>
List orEmpty(std::optional<List> list) {
    return list ? *std::move(list) : List();
}

} // namespace

LibraryStore::LibraryStore(const QString& applicationSupportFolder)
    : m_folder(folderIn(applicationSupportFolder)) {}

QString LibraryStore::folderIn(const QString& applicationSupportFolder) {
    return (applicationSupportFolder.isEmpty() ? QDir::tempPath() : applicationSupportFolder) +
           QStringLiteral("/Vorq/Library");
}

QString LibraryStore::path(QStringView fileName) const {
    QDir().mkpath(m_folder);
    return m_folder + u'/' + fileName.toString();
}

// A program that only reads removes nothing.
template<typename Record>
void LibraryStore::replace(QStringView fileName, const std::vector<Record>& list) const {
    if (!std::exchange(m_hasSaved, true)) {
        for (const QStringView name : allFiles)
            removeLeftovers(path(name));
    }
    replaceFile(path(fileName), [&list](const JsonWriter::Sink& put) { encode(list, put); });
}

std::vector<SavedNote> LibraryStore::loadNotes() const {
    return orEmpty(decodeSavedNotes(JsonFile::open(path(notesFile))));
}

std::vector<SavedChat> LibraryStore::loadChats() const {
    return orEmpty(decodeSavedChats(JsonFile::open(path(chatsFile))));
}

std::vector<HubAIChat> LibraryStore::loadAIChats() const {
    return orEmpty(decodeHubAIChats(JsonFile::open(path(aiChatsFile))));
}

std::vector<HubTask> LibraryStore::loadTasks() const {
    return orEmpty(decodeHubTasks(JsonFile::open(path(tasksFile))));
}

std::vector<HubTaskColumn> LibraryStore::loadTaskColumns(Date now) const {
    return orEmpty(decodeHubTaskColumns(JsonFile::open(path(taskColumnsFile)), now));
}

std::vector<HubTracker> LibraryStore::loadTrackers(Date now) const {
    return orEmpty(decodeHubTrackers(JsonFile::open(path(trackersFile)), now));
}

void LibraryStore::save(const std::vector<SavedNote>& notes) const {
    replace(notesFile, notes);
}

void LibraryStore::save(const std::vector<SavedChat>& chats) const {
    replace(chatsFile, chats);
}

void LibraryStore::save(const std::vector<HubAIChat>& chats) const {
    replace(aiChatsFile, chats);
}

void LibraryStore::save(const std::vector<HubTask>& tasks) const {
    replace(tasksFile, tasks);
}

void LibraryStore::save(const std::vector<HubTaskColumn>& columns) const {
    replace(taskColumnsFile, columns);
}

void LibraryStore::save(const std::vector<HubTracker>& trackers) const {
    replace(trackersFile, trackers);
}

} // namespace vorq
