// What is written to file systems that flush nothing, and how often is flushed.

#include "support/files/DurableFile.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::atomic<int> flushRefusal = 0; // an error number
std::atomic<int> flushCount = 0;

} // namespace

// In place of the system's.
extern "C" [[gnu::visibility("default")]] int fsync(int file) {
    ++flushCount;
    if (flushRefusal == 0) return static_cast<int>(::syscall(SYS_fsync, file));
    errno = flushRefusal;
    return -1;
}

namespace vorq {
namespace {

class RefusedFlushTest : public testing::Test {
  protected:
    RefusedFlushTest() { flushCount = 0; }
    ~RefusedFlushTest() override { flushRefusal = 0; }

    [[nodiscard]] QByteArray content() const {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath("file");
};

TEST_F(RefusedFlushTest, AFileSystemThatCannotFlushTakesFilesAllTheSame) {
    for (const int refusal : {EINVAL, ENOTSUP, ENOSYS}) {
        flushRefusal = refusal;
        EXPECT_TRUE(replaceFile(m_path, QByteArray::number(refusal))) << refusal;
        EXPECT_EQ(content(), QByteArray::number(refusal));
    }
}

TEST_F(RefusedFlushTest, OneThatFailsToFlushKeepsTheFormerFile) {
    ASSERT_TRUE(replaceFile(m_path, "former"));
    flushRefusal = EIO;
    EXPECT_EQ(replaceFile(m_path, "new").error(), "Input/output error");
    EXPECT_EQ(content(), "former");
}

TEST_F(RefusedFlushTest, TheFolderIsFlushedUnlessThatIsNotWanted) {
    ASSERT_TRUE(replaceFile(m_path, "one"));
    EXPECT_EQ(flushCount.exchange(0), 2);
    ASSERT_TRUE(replaceFile(m_path, "two", FileRules{.flushesFolder = false}));
    EXPECT_EQ(flushCount, 1);
}

} // namespace
} // namespace vorq
