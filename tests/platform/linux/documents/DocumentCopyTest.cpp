#include "platform/linux/documents/DocumentCopy.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

namespace vorq {
namespace {

class DocumentCopyTest : public testing::Test {
  protected:
    void put(const QString& path, const QByteArray& bytes) const {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    static QByteArray read(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "unreadable";
    }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath("a.docx");
    QString m_copy = m_folder.filePath("copy.docx");
};

TEST_F(DocumentCopyTest, HoldsTheSameBytes) {
    const QByteArray bytes = QByteArrayLiteral("silt").repeated(1 << 20);
    put(m_path, bytes);
    EXPECT_EQ(copyDocument(m_path, m_copy, {}), std::nullopt);
    EXPECT_EQ(read(m_copy), bytes);
}

TEST_F(DocumentCopyTest, NeverTakesThePlaceOfAFile) {
    put(m_path, "chosen");
    put(m_copy, "here before");
    EXPECT_EQ(copyDocument(m_path, m_copy, {}), DocumentFailure::NoRoom);
    EXPECT_EQ(read(m_copy), "here before");
}

TEST_F(DocumentCopyTest, CanBeStopped) {
    put(m_path, "chosen");
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(copyDocument(m_path, m_copy, stop.get_token()), DocumentFailure::Stopped);
}

TEST_F(DocumentCopyTest, OfAFileThatGrowsBeyondItsLimitIsGivenUp) {
    QFile file(m_path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(DocumentTools::officeLimit + 1));
    EXPECT_EQ(copyDocument(m_path, m_copy, {}), DocumentFailure::TooLarge);
}

// A file that may not grow, as on a disk that is full.
TEST_F(DocumentCopyTest, TellsThatThereIsNoRoom) {
    put(m_path, QByteArray(1 << 20, 'x'));
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small{1 << 16, before.rlim_max};
    const auto formerHandler = ::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const auto failure = copyDocument(m_path, m_copy, {});
    ::setrlimit(RLIMIT_FSIZE, &before);
    ::signal(SIGXFSZ, formerHandler);
    EXPECT_EQ(failure, DocumentFailure::NoRoom);
}

} // namespace
} // namespace vorq
