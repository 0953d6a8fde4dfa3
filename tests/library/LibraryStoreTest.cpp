#include "library/LibraryStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;

std::vector<SavedNote> oneNote(const QString& text) {
    SavedNote note;
    note.id = QUuid::createUuid();
    note.text = text;
    note.createdAt = Date(1'700'000'000s);
    return {note};
}

class LibraryStoreTest : public testing::Test {
  protected:
    QTemporaryDir m_root;
    QString m_folder = m_root.filePath("Vorq/Library");
    QString m_notes = m_folder + "/saved-notes.json";
    LibraryStore m_store{m_root.path()};

    void put(const QByteArray& content) const {
        QDir().mkpath(m_folder);
        QFile file(m_notes);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    [[nodiscard]] static QByteArray contentOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }
};

TEST_F(LibraryStoreTest, FirstLaunchMakesTheFolderAndReadsEmptyLists) {
    EXPECT_TRUE(m_store.loadNotes().empty());
    EXPECT_TRUE(m_store.loadChats().empty());
    EXPECT_TRUE(QDir(m_folder).exists());
    EXPECT_TRUE(QDir(m_folder).isEmpty());
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

TEST_F(LibraryStoreTest, SaveReplacesALinkAndSparesItsTarget) {
    const QString target = m_root.filePath("other.json");
    put("[]");
    ASSERT_TRUE(QFile::rename(m_notes, target));
    ASSERT_TRUE(QFile::link(target, m_notes));
    const std::vector<SavedNote> notes = oneNote("new");
    m_store.save(notes);
    EXPECT_EQ(m_store.loadNotes(), notes);
    EXPECT_EQ(contentOf(target), "[]");
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

TEST_F(LibraryStoreTest, KillAtAnyMomentLeavesAWholeList) {
    const QString body(20'000, u'x');
    m_store.save(oneNote(body));
    for (int round = 0; round < 20; ++round) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            while (true)
                m_store.save(oneNote(body));
        }
        ::usleep(static_cast<useconds_t>(500 * (round + 1)));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        const std::vector<SavedNote> notes = m_store.loadNotes();
        ASSERT_EQ(notes.size(), 1);
        EXPECT_EQ(notes.front().text, body);
    }
}

} // namespace
} // namespace vorq
