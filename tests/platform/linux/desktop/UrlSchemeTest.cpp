#include "platform/linux/desktop/UrlScheme.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class UrlSchemeTest : public testing::Test {
  protected:
    [[nodiscard]] QString path(const QString& folder) const {
        return m_folder.filePath(folder + "/com.vorq.desk.desktop");
    }

    [[nodiscard]] QByteArray entry() const {
        QFile file(path("mine"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void write(const QString& folder, const QByteArray& text) {
        ASSERT_TRUE(QDir(m_folder.path()).mkpath(folder));
        QFile file(path(folder));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    [[nodiscard]] bool ensure(const QString& executable = "/opt/vorq") const {
        return UrlScheme({m_folder.filePath("mine"), m_folder.filePath("all")}, executable)
            .ensureEntry();
    }

    QTemporaryDir m_folder;
};

TEST_F(UrlSchemeTest, TheUsersOwnEntryIsWrittenOnce) {
    EXPECT_TRUE(ensure());
    EXPECT_TRUE(entry().contains("\nExec=/opt/vorq %u\n"));
    EXPECT_TRUE(entry().contains("\nMimeType=x-scheme-handler/vorq;\n"));
    EXPECT_FALSE(ensure());
}

TEST_F(UrlSchemeTest, ItFollowsTheProgramToAnotherPlace) {
    EXPECT_TRUE(ensure("/old/vorq"));
    EXPECT_TRUE(ensure("/new/vorq"));
    EXPECT_TRUE(entry().contains("\nExec=/new/vorq %u\n"));
}

TEST_F(UrlSchemeTest, AnInstalledProgramNeedsNone) {
    write("all", "[Desktop Entry]\n");
    EXPECT_FALSE(ensure());
    EXPECT_EQ(entry(), "");
}

TEST_F(UrlSchemeTest, OursGivesWayToAnInstallation) {
    EXPECT_TRUE(ensure());
    write("all", "[Desktop Entry]\n");
    EXPECT_TRUE(ensure());
    EXPECT_FALSE(QFile::exists(path("mine")));
}

TEST_F(UrlSchemeTest, AnEntryOfTheUsersIsLeftAlone) {
    write("mine", "[Desktop Entry]\nExec=my-own-script %u\n");
    EXPECT_FALSE(ensure());
    write("all", "[Desktop Entry]\n");
    EXPECT_FALSE(ensure());
    EXPECT_EQ(entry(), "[Desktop Entry]\nExec=my-own-script %u\n");
}

} // namespace
} // namespace vorq
