#include "doubles/library/LibraryFolder.h"

#include <sys/stat.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;

using LibraryStoreTest = LibraryFolder;

TEST_F(LibraryStoreTest, FirstLaunchMakesTheFolderAndReadsEmptyLists) {
    EXPECT_TRUE(m_store.loadNotes().empty());
    EXPECT_TRUE(m_store.loadChats().empty());
    EXPECT_TRUE(QDir(m_folder).exists());
    EXPECT_TRUE(QDir(m_folder).isEmpty());
}

TEST_F(LibraryStoreTest, WithoutAFolderForApplicationsItIsAmongTemporaryFiles) {
    EXPECT_EQ(LibraryStore::folderIn({}), QDir::tempPath() + "/Vorq/Library");
    EXPECT_EQ(LibraryStore::folderIn("/data"), "/data/Vorq/Library");
}

TEST_F(LibraryStoreTest, ReadsWhatItSaved) {
    const std::vector<SavedNote> notes = oneNote("é");
    const std::vector<SavedChat> chats = {{QUuid::createUuid(), "Plan", Date(0s), {}}};
    m_store.save(notes);
    m_store.save(chats);
    EXPECT_EQ(m_store.loadNotes(), notes);
    EXPECT_EQ(m_store.loadChats(), chats);
    EXPECT_EQ(QDir(m_folder).entryList(QDir::Files, QDir::Name),
              (QStringList{"saved-chats.json", "saved-notes.json"}));
}

TEST_F(LibraryStoreTest, KeepsEachListOfTheHubInAFile) {
    const std::vector<HubAIChat> chats(1);
    const std::vector<HubTask> tasks(2);
    const std::vector<HubTaskColumn> columns(3);
    const std::vector<HubTracker> trackers(4);
    m_store.save(chats);
    m_store.save(tasks);
    m_store.save(columns);
    m_store.save(trackers);
    EXPECT_EQ(m_store.loadAIChats(), chats);
    EXPECT_EQ(m_store.loadTasks(), tasks);
    EXPECT_EQ(m_store.loadTaskColumns(Date(1s)), columns);
    EXPECT_EQ(m_store.loadTrackers(Date(1s)), trackers);
    EXPECT_EQ(QDir(m_folder).entryList(QDir::Files, QDir::Name),
              (QStringList{"hub-ai-chats.json", "hub-task-columns.json", "hub-tasks.json",
                           "hub-trackers.json"}));
}

TEST_F(LibraryStoreTest, KeepsFilesFromOthers) {
    put("[]");
    QFile::setPermissions(m_notes, QFile::ReadOwner | QFile::ReadOther);
    m_store.save(oneNote("private"));
    struct stat status{};
    ASSERT_EQ(::stat(qPrintable(m_notes), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600);
}

TEST_F(LibraryStoreTest, KnowsWhetherAFileIsWhatASaveWouldMakeOfIt) {
    const std::vector<SavedNote> notes = oneNote(QString(10'000, u'a'));
    EXPECT_FALSE(m_store.isWritten(notes));
    m_store.save(notes);
    EXPECT_TRUE(m_store.isWritten(notes));
    const QByteArray content = contentOf(m_notes);
    put(content + ' ');
    EXPECT_FALSE(m_store.isWritten(notes));
    put(content.chopped(1));
    EXPECT_FALSE(m_store.isWritten(notes));
    put(QByteArray(content).replace(5'000, 1, "b"));
    EXPECT_FALSE(m_store.isWritten(notes));
    put(content);
    EXPECT_TRUE(m_store.isWritten(notes));
    QFile::setPermissions(m_notes, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
    EXPECT_FALSE(m_store.isWritten(notes)) << "others may read it";
}

TEST_F(LibraryStoreTest, DamagedFileReadsAsEmptyAndStays) {
    const QByteArray damaged =
        R"([{"id":"2f564652-466d-e486-522c-4f8d6102dd70","text":"","createdAt":"2026-03-01T10:20:30.5Z"}])";
    put(damaged);
    EXPECT_TRUE(m_store.loadNotes().empty());
    EXPECT_EQ(contentOf(m_notes), damaged);
    EXPECT_EQ(QDir(m_folder).entryList(QDir::Files).size(), 1);
}

TEST_F(LibraryStoreTest, BadContentOfAnyKindReadsAsEmpty) {
    for (const QByteArray& content : {QByteArray(), QByteArray("[\n"), QByteArray("\0\xFF\x01", 3),
                                      QByteArray(100'000, '['), QByteArray("\xFF\xFE[\0]\0", 6)}) {
        put(content);
        EXPECT_TRUE(m_store.loadNotes().empty());
    }
}

TEST_F(LibraryStoreTest, NextSaveReplacesADamagedFile) {
    put("damaged");
    const std::vector<SavedNote> notes = oneNote("new");
    m_store.save(notes);
    EXPECT_EQ(m_store.loadNotes(), notes);
}

TEST_F(LibraryStoreTest, PipeInTheFilesPlaceIsNotWaitedFor) {
    ASSERT_TRUE(QDir().mkpath(m_folder));
    ASSERT_EQ(::mkfifo(qPrintable(m_notes), 0600), 0);
    EXPECT_TRUE(m_store.loadNotes().empty());
}

TEST_F(LibraryStoreTest, FailedSaveLeavesNothingBehind) {
    ASSERT_TRUE(QDir().mkpath(m_notes + "/occupied"));
    m_store.save(oneNote("lost"));
    EXPECT_TRUE(m_store.loadNotes().empty());
    EXPECT_EQ(QDir(m_folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{"saved-notes.json"});
}

TEST_F(LibraryStoreTest, FolderThatCannotBeMadeReadsAsEmptyAndSavesNothing) {
    QFile file(m_root.filePath("Vorq"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    m_store.save(oneNote("lost"));
    EXPECT_TRUE(m_store.loadNotes().empty());
    EXPECT_EQ(file.size(), 0);
}

} // namespace
} // namespace vorq
