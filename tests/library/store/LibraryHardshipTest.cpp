// What the world does to the files of the library: kills, full disks, folders that cannot be
// written, other processes, files of any size.

#include "doubles/async/ForkAlone.h"
#include "doubles/library/LibraryFolder.h"
#include "library/store/LibraryFile.h"

#include <array>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <poll.h>
#include <random>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace vorq {
namespace {

constexpr int passed = 0;

class LibraryHardship : public LibraryFolder {
  protected:
    // A child process that does the work and ends with its result.
    static pid_t start(const std::function<int()>& work) {
        const pid_t child = forkAlone();
        if (child == 0) ::_exit(work());
        return child;
    }

    struct End {
        int status = -1;
        rusage used{};
    };

    static End end(pid_t child) {
        End end;
        EXPECT_EQ(::wait4(child, &end.status, 0, &end.used), child);
        return end;
    }

    static void age(const QString& path, std::time_t seconds) {
        const timespec moment{std::time(nullptr) - seconds, 0};
        const timespec times[] = {moment, moment};
        ASSERT_EQ(::utimensat(AT_FDCWD, qPrintable(path), times, 0), 0);
    }
};

// Saves notes numbered from the first until it is killed; tells of each that is finished.
[[noreturn]] void saveForever(const LibraryStore& store, std::vector<SavedNote> notes, int first,
                              int finished) {
    for (int number = first;; ++number) {
        notes.front().thoughts = QString::number(number);
        store.save(notes);
        if (::write(finished, &number, sizeof number) != sizeof number) ::_exit(1);
    }
}

TEST_F(LibraryHardship, KillAtAnyMomentLeavesAWholeListAndLosesNoFinishedSave) {
    constexpr int wanted = 1000;
    std::minstd_rand random(1);
    std::uniform_int_distribution<useconds_t> delays(0, 60'000);
    const std::vector<SavedNote> notes = oneNote(QString(20'000, u'x'));
    int last = 0;
    for (int round = 0; last < wanted; ++round) {
        int ends[2];
        ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
        const pid_t child = forkAlone();
        ASSERT_GE(child, 0);
        if (child == 0) saveForever(m_store, notes, last + 1, ends[1]);
        ::close(ends[1]);
        ::usleep(delays(random));
        ::kill(child, SIGKILL);
        end(child);
        for (int number = 0; ::read(ends[0], &number, sizeof number) == sizeof number;)
            last = number;
        ::close(ends[0]);
        const std::vector<SavedNote> loaded = m_store.loadNotes();
        if (last == 0 && loaded.empty()) continue;
        ASSERT_EQ(loaded.size(), 1) << "round " << round;
        ASSERT_EQ(loaded.front().text, notes.front().text);
        const int found = loaded.front().thoughts.toInt();
        ASSERT_TRUE(found == last || found == last + 1) << found << " after " << last;
        last = found;
    }
}

TEST_F(LibraryHardship, OnlyAFirstSaveRemovesWhatAKilledOneLeft) {
    const QString leftover = m_folder + "/.vorq-save-aB3dE6";
    put(leftover, "[");
    age(leftover, 120);
    EXPECT_TRUE(m_store.loadNotes().empty());
    EXPECT_TRUE(QFile::exists(leftover));
    m_store.save(oneNote("a"));
    EXPECT_EQ(names(), QStringList{"saved-notes.json"});
}

TEST_F(LibraryHardship, NothingElseIsRemoved) {
    const QString fresh = ".vorq-save-fresh1";
    const QString locked = ".vorq-save-locked";
    const QStringList others = {".vorq-save-", ".vorq-save-toolong", ".vorq-save-shrt",
                                "saved-notes.json.backup", "vorq-save-aB3dE6"};
    for (const QString& name : QStringList{fresh, locked} + others)
        put(m_folder + '/' + name, "[]");
    for (const QString& name : QStringList{locked} + others)
        age(m_folder + '/' + name, 120);
    const int writer = ::open(qPrintable(m_folder + '/' + locked), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(writer, LOCK_EX), 0);
    ASSERT_EQ(::symlink("saved-notes.json.backup", qPrintable(m_folder + "/.vorq-save-linked")), 0);
    QDir().mkpath(m_folder + "/.vorq-save-folder");
    const qsizetype before = names().size();
    m_store.save(oneNote("a"));
    EXPECT_EQ(names().size(), before + 1);
    ::close(writer);
}

TEST_F(LibraryHardship, LeftoversBesideALinksTargetAreRemovedToo) {
    const QString away = m_root.filePath("away");
    QDir().mkpath(away);
    QDir().mkpath(m_folder);
    ASSERT_TRUE(QFile::link(away + "/notes.json", m_notes));
    put(away + "/.vorq-save-aB3dE6", "[");
    age(away + "/.vorq-save-aB3dE6", 120);
    m_store.save(oneNote("a"));
    EXPECT_EQ(QDir(away).entryList(QDir::Files | QDir::Hidden), QStringList{"notes.json"});
}

TEST_F(LibraryHardship, TwoProcessesTearNoFileAndLeaveNothing) {
    const std::vector<std::vector<SavedNote>> lists = {oneNote(QString(50'000, u'a')),
                                                       oneNote(QString(90'000, u'b'))};
    m_store.save(lists.front());
    std::vector<pid_t> children;
    children.reserve(lists.size());
    for (const auto& list : lists) {
        children.push_back(start([&] {
            const LibraryStore store(m_root.path());
            for (int count = 0; count < 100; ++count)
                store.save(list);
            return passed;
        }));
    }
    int reads = 0;
    for (; ::waitpid(children.front(), nullptr, WNOHANG) == 0; ++reads) {
        const std::vector<SavedNote> loaded = m_store.loadNotes();
        ASSERT_TRUE(loaded == lists[0] || loaded == lists[1]);
    }
    EXPECT_GT(reads, 0);
    EXPECT_EQ(end(children.back()).status, passed);
    EXPECT_EQ(names(), QStringList{"saved-notes.json"});
}

// A limit on the size of files stops the write in its middle, as a full disk does.
TEST_F(LibraryHardship, FullDiskLeavesTheFormerFileAndNothingElse) {
    const std::vector<SavedNote> former = oneNote("former");
    m_store.save(former);
    const pid_t child = start([this] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{100'000, 100'000};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return 1;
        m_store.save(oneNote(QString(200'000, u'x')));
        return passed;
    });
    EXPECT_EQ(end(child).status, passed);
    EXPECT_EQ(m_store.loadNotes(), former);
    EXPECT_EQ(names(), QStringList{"saved-notes.json"});
}

TEST_F(LibraryHardship, FullDiskInALargeListLeavesTheFormerFileToo) {
    const std::vector<SavedNote> former = oneNote(QString(2'000'000, u'x'));
    m_store.save(former);
    const pid_t child = start([this] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{6'000'000, 6'000'000};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return 1;
        return m_store.write(oneNote(QString(15'000'000, u'x'))) ? 2 : passed;
    });
    EXPECT_EQ(end(child).status, passed);
    EXPECT_EQ(m_store.loadNotes(), former);
    EXPECT_EQ(names(), QStringList{"saved-notes.json"});
}

// The other program knows of no lock, as an editor does.
TEST_F(LibraryHardship, AWriteOfAnotherProgramRightAfterASaveIsSeen) {
    LibraryFile<SavedNote> file(m_store);
    const std::vector<SavedNote> theirs = oneNote("theirs");
    for (int round = 0; round < 50; ++round) {
        const QString next = m_folder + "/next.json";
        m_store.save(theirs);
        ASSERT_EQ(::rename(qPrintable(m_notes), qPrintable(next)), 0);
        m_store.save(oneNote("old"));
        std::vector<SavedNote> notes = file.load({});
        const FileStamp former = m_store.stamp<SavedNote>();
        std::thread other([&] {
            while (m_store.stamp<SavedNote>() == former)
                continue;
            ::rename(qPrintable(next), qPrintable(m_notes));
        });
        notes.front().thoughts = "ours";
        file.save(notes);
        other.join();
        ASSERT_EQ(m_store.loadNotes(), theirs);
        const auto seen = file.takeIn(notes);
        ASSERT_TRUE(seen) << "round " << round;
        EXPECT_EQ(*seen, theirs);
    }
}

// What this process still holds of the folder.
QStringList openFilesIn(const QString& folder) {
    QStringList files;
    for (const QFileInfo& entry : QDir("/proc/self/fd").entryInfoList(QDir::Files | QDir::System)) {
        const QByteArray path = QFile::encodeName(entry.filePath());
        std::array<char, PATH_MAX> target{};
        if (::readlink(path.constData(), target.data(), target.size() - 1) < 0) continue;
        const QString name = QFile::decodeName(target.data());
        if (name.startsWith(folder)) files << name;
    }
    return files;
}

TEST_F(LibraryHardship, ReplacedLargeFilesAreLetGo) {
    std::vector<SavedNote> notes = oneNote(QString(9'000'000, u'x'));
    for (int count = 0; count < 10; ++count) {
        notes.front().text = QString::number(count);
        ASSERT_TRUE(m_store.write(notes));
        ASSERT_EQ(m_store.loadNotes(), notes);
    }
    EXPECT_EQ(names(), QStringList{"saved-notes.json"});
    constexpr int mostWaits = 3000;
    for (int waits = 0; !openFilesIn(m_folder).isEmpty() && waits < mostWaits; ++waits)
        ::usleep(10'000);
    EXPECT_EQ(openFilesIn(m_folder), QStringList());
}

// Root may write anywhere, so it becomes somebody else for this.
TEST_F(LibraryHardship, ReadOnlyFolderKeepsTheFormerFile) {
    const std::vector<SavedNote> former = oneNote("former");
    m_store.save(former);
    ASSERT_EQ(::chmod(qPrintable(m_root.path()), 0755), 0);
    ASSERT_EQ(::chmod(qPrintable(m_notes), 0644), 0);
    ASSERT_EQ(::chmod(qPrintable(m_folder), 0555), 0);
    const pid_t child = start([&] {
        constexpr uid_t nobody = 65534;
        if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) return 1;
        if (::access(qPrintable(m_folder), W_OK) == 0) return 2;
        m_store.save(oneNote("lost"));
        return m_store.loadNotes() == former ? passed : 3;
    });
    EXPECT_EQ(end(child).status, passed);
    EXPECT_EQ(::chmod(qPrintable(m_folder), 0755), 0);
    EXPECT_EQ(names(), QStringList{"saved-notes.json"});
    EXPECT_EQ(m_store.loadNotes(), former);
}

TEST_F(LibraryHardship, FileThatMayNotBeReadIsEmptyAndStays) {
    m_store.save(oneNote("secret"));
    ASSERT_EQ(::chmod(qPrintable(m_root.path()), 0755), 0);
    ASSERT_EQ(::chmod(qPrintable(m_notes), 0000), 0);
    const pid_t child = start([this] {
        constexpr uid_t nobody = 65534;
        if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) return 1;
        return m_store.loadNotes().empty() ? passed : 2;
    });
    EXPECT_EQ(end(child).status, passed);
    EXPECT_EQ(names(), QStringList{"saved-notes.json"});
}

// Times the size of the file. The address sanitizer keeps memory for a while that was given back,
// and copies what grows.
#if __has_feature(address_sanitizer)
constexpr double mostMemoryOfALoad = 5;
constexpr double mostMemoryOfADamagedLoad = 3;
constexpr double mostMemoryOfAChange = 4;
#else
constexpr double mostMemoryOfALoad = 2.2;
constexpr double mostMemoryOfADamagedLoad = 1.3;
constexpr double mostMemoryOfAChange = 1.4; // times that of a load
#endif

class LibraryFileSize : public LibraryHardship {
  protected:
    // The most memory, in MB, that loading a file takes, of which all but the start is a hole.
    long memoryForFile(const QByteArray& content, off_t size) {
        put(content);
        EXPECT_EQ(::truncate(qPrintable(m_notes), size), 0);
        const End before = end(start([] { return passed; }));
        const End loaded = end(start([this] { return m_store.loadNotes().empty() ? passed : 1; }));
        EXPECT_EQ(loaded.status, passed);
        return (loaded.used.ru_maxrss - before.used.ru_maxrss) / 1024;
    }
};

TEST_F(LibraryFileSize, WhatDoesNotBeginAsAListIsNotReadHoweverLarge) {
    EXPECT_LT(memoryForFile({}, 500'000'000), 10);
    EXPECT_LT(memoryForFile("{", 500'000'000), 10);
    EXPECT_LT(memoryForFile("\n\xFF", 500'000'000), 10);
}

TEST_F(LibraryFileSize, DamagedListTakesNoMoreMemoryThanItsFile) {
    EXPECT_LT(static_cast<double>(memoryForFile("[", 100'000'000)), mostMemoryOfADamagedLoad * 100);
}

TEST_F(LibraryFileSize, BeyondFourGigabytesNothingIsRead) {
    EXPECT_LT(memoryForFile("[", 5'000'000'000), 10);
}

TEST_F(LibraryFileSize, LoadingTakesLittleMoreThanTheRecords) {
    // Saved elsewhere, so that loading finds no memory that was used before.
    const End saved = end(start([this] {
        std::vector<SavedNote> notes(20'000);
        for (SavedNote& note : notes)
            note.text = QString(1500, u'x');
        m_store.save(notes);
        return passed;
    }));
    EXPECT_EQ(saved.status, passed);
    const auto fileSize = static_cast<double>(QFileInfo(m_notes).size());
    const End before = end(start([] { return passed; }));
    const End loaded =
        end(start([this] { return m_store.loadNotes().size() == 20'000 ? passed : 1; }));
    EXPECT_EQ(loaded.status, passed);
    const auto grown = static_cast<double>(loaded.used.ru_maxrss - before.used.ru_maxrss);
    EXPECT_LT(grown * 1024, mostMemoryOfALoad * fileSize);
}

TEST_F(LibraryFileSize, AChangeOfAnotherProgramTakesNoMemoryForASecondList) {
    const QString changed = m_folder + "/changed.json";
    const End saved = end(start([&] {
        std::vector<SavedNote> notes(20'000);
        for (SavedNote& note : notes) {
            note.id = QUuid::createUuid();
            note.text = QString(1500, u'x');
        }
        m_store.save(notes);
        notes.push_back(oneNote("theirs").front());
        return ::rename(qPrintable(m_notes), qPrintable(changed)) == 0 && m_store.write(notes) &&
                       ::rename(qPrintable(m_notes), qPrintable(m_folder + "/next.json")) == 0 &&
                       ::rename(qPrintable(changed), qPrintable(m_notes)) == 0
                   ? passed
                   : 1;
    }));
    ASSERT_EQ(saved.status, passed);
    const End before = end(start([] { return passed; }));
    const auto follow = [this](bool isChanged) {
        LibraryFile<SavedNote> file(m_store);
        const std::vector<SavedNote> notes = file.load({});
        if (!isChanged) return notes.size() == 20'000 ? passed : 1;
        if (::rename(qPrintable(m_folder + "/next.json"), qPrintable(m_notes)) != 0) return 2;
        const auto list = file.takeIn(notes);
        return list && list->size() == 20'001 ? passed : 3;
    };
    const End loaded = end(start([&] { return follow(false); }));
    const End followed = end(start([&] { return follow(true); }));
    EXPECT_EQ(loaded.status, passed);
    EXPECT_EQ(followed.status, passed);
    const auto growth = [&before](const End& of) {
        return static_cast<double>(of.used.ru_maxrss - before.used.ru_maxrss);
    };
    EXPECT_LT(growth(followed), mostMemoryOfAChange * growth(loaded));
}

} // namespace
} // namespace vorq
