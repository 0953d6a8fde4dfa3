#include "support/files/DurableFile.h"
#include "doubles/async/ForkAlone.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vorq {
namespace {

class DurableFileTest : public testing::Test {
  protected:
    [[nodiscard]] static QByteArray contentOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }
    [[nodiscard]] static mode_t modeOf(const QString& path) {
        struct stat status{};
        return ::stat(qPrintable(path), &status) == 0 ? status.st_mode & 0777 : 0;
    }

    // Root may write anything, so it becomes somebody else for this.
    static QString errorAsUser(const QString& path, const FileRules& rules) {
        const QTemporaryDir outbox;
        ::chmod(qPrintable(outbox.path()), 0777);
        const QString told = outbox.filePath("told");
        QFile(told).open(QIODevice::WriteOnly);
        ::chmod(qPrintable(told), 0666);
        const pid_t child = forkAlone();
        if (child == 0) {
            constexpr uid_t somebodyElse = 65534;
            if (::geteuid() == 0 && ::setuid(somebodyElse) != 0) ::_exit(2);
            QFile file(told);
            if (!file.open(QIODevice::WriteOnly)) ::_exit(3);
            const FileOutcome outcome = replaceFile(path, "new", rules);
            file.write(outcome ? "written" : outcome.error().toUtf8());
            file.close();
            ::_exit(0);
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        return QString::fromUtf8(contentOf(told));
    }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath("file");
};

TEST_F(DurableFileTest, AFileIsPrivateWhateverTheFormerWas) {
    ASSERT_TRUE(replaceFile(m_path, "one"));
    EXPECT_EQ(modeOf(m_path), 0600U);
    ::chmod(qPrintable(m_path), 0644);
    ASSERT_TRUE(replaceFile(m_path, "two"));
    EXPECT_EQ(modeOf(m_path), 0600U);
    EXPECT_EQ(contentOf(m_path), "two");
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"file"});
}

TEST_F(DurableFileTest, ASharedFileIsAsTheMaskHasItAndStaysAsTheUserMadeIt) {
    const mode_t former = ::umask(027);
    ASSERT_TRUE(replaceFile(m_path, "one", sharedFile));
    ::umask(former);
    EXPECT_EQ(modeOf(m_path), 0640U);
    ::chmod(qPrintable(m_path), 0755);
    ASSERT_TRUE(replaceFile(m_path, "two", sharedFile));
    EXPECT_EQ(modeOf(m_path), 0755U);
    EXPECT_EQ(contentOf(m_path), "two");
}

TEST_F(DurableFileTest, AProtectedFileStaysAsItIsWhereThatIsMinded) {
    ::chmod(qPrintable(m_folder.path()), 0777);
    ASSERT_TRUE(replaceFile(m_path, "one"));
    ::chmod(qPrintable(m_path), 0444);
    EXPECT_EQ(errorAsUser(m_path, {.mindsProtection = true}), "Permission denied");
    EXPECT_EQ(errorAsUser(m_path, sharedFile), "Permission denied");
    EXPECT_EQ(contentOf(m_path), "one");
    EXPECT_EQ(errorAsUser(m_path, {}), "written");
    EXPECT_EQ(contentOf(m_path), "new");
}

TEST_F(DurableFileTest, WhereNothingCanBeMadeTheFormerFileStays) {
    ASSERT_TRUE(replaceFile(m_path, "one"));
    ::chmod(qPrintable(m_path), 0666);
    ::chmod(qPrintable(m_folder.path()), 0555);
    EXPECT_EQ(errorAsUser(m_path, {}), "Permission denied");
    ::chmod(qPrintable(m_folder.path()), 0755);
    EXPECT_EQ(contentOf(m_path), "one");
    EXPECT_EQ(replaceFile(m_folder.filePath("missing/file"), "x").error(),
              "No such file or directory");
}

TEST_F(DurableFileTest, TheTargetOfALinkIsReplacedAndTheLinkStays) {
    const QString link = m_folder.filePath("link");
    ASSERT_TRUE(replaceFile(m_path, "one"));
    ASSERT_TRUE(QFile::link(m_path, link));
    ASSERT_TRUE(replaceFile(link, "two", sharedFile));
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(contentOf(m_path), "two");
}

} // namespace
} // namespace vorq
