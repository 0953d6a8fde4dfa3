#include "support/files/FolderLock.h"
#include "doubles/async/ForkAlone.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;

TEST(FolderLockTest, IsHeldByOneAtATimeAndLeavesNothing) {
    const QTemporaryDir folder;
    {
        const auto lock = FolderLock::take(folder.path(), 0ms);
        EXPECT_TRUE(lock);
        EXPECT_FALSE(FolderLock::take(folder.path(), 20ms));
    }
    EXPECT_TRUE(FolderLock::take(folder.path(), 0ms));
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST(FolderLockTest, IsWaitedFor) {
    const QTemporaryDir folder;
    auto lock = FolderLock::take(folder.path(), 0ms);
    std::thread holder([&lock] {
        std::this_thread::sleep_for(30ms);
        lock.reset();
    });
    EXPECT_TRUE(FolderLock::take(folder.path(), 10s));
    holder.join();
}

TEST(FolderLockTest, EndsWithItsProcess) {
    const QTemporaryDir folder;
    const pid_t child = forkAlone();
    if (child == 0) {
        const auto lock = FolderLock::take(folder.path(), 0ms);
        ::_exit(lock ? 0 : 1);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(FolderLock::take(folder.path(), 0ms));
}

TEST(FolderLockTest, IsOnTheFolderThatIsThereWhenTheWaitEnds) {
    const QTemporaryDir root;
    const QString folder = root.filePath("library");
    QDir().mkpath(folder);
    auto former = FolderLock::take(folder, 0ms);
    std::thread holder([&] {
        std::this_thread::sleep_for(30ms);
        QDir().rename(folder, root.filePath("moved away"));
        QDir().mkpath(folder);
        former.reset();
    });
    const auto lock = FolderLock::take(folder, 10s);
    holder.join();
    EXPECT_TRUE(lock);
    EXPECT_FALSE(FolderLock::take(folder, 0ms));
}

TEST(FolderLockTest, WhatCannotBeLockedIsFree) {
    EXPECT_TRUE(FolderLock::take("/nowhere/at all", 0ms));
}

} // namespace
} // namespace vorq
