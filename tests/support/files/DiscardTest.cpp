#include "support/files/Discard.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace vorq {
namespace {

// The trash is that of the user's folder for data, which is one of this test's own.
class DiscardTest : public testing::Test {
  protected:
    DiscardTest() { qputenv("XDG_DATA_HOME", m_folder.filePath("data").toUtf8()); }
    ~DiscardTest() override { qunsetenv("XDG_DATA_HOME"); }

    QString put(const QString& name) const {
        const QString path = m_folder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("words");
        return path;
    }

    void takeTrashAway() const { put("data/Trash"); }

    [[nodiscard]] QStringList trashed() const {
        return QDir(m_folder.filePath("data/Trash/files"))
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    QTemporaryDir m_folder{QDir::homePath() + "/.vorq-discard-test-XXXXXX"};
};

TEST_F(DiscardTest, AFileCanBeFoundInTheTrash) {
    const QString file = put("data/one.txt");
    EXPECT_TRUE(discard(file));
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_EQ(trashed(), QStringList{"one.txt"});
}

TEST_F(DiscardTest, ATrashThatIsMadeIsTheUsersAlone) {
    EXPECT_TRUE(discard(put("data/one.txt")));
    const auto others = QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
    EXPECT_FALSE(QFile::permissions(m_folder.filePath("data/Trash")) & others);
}

TEST_F(DiscardTest, AFolderGoesThereWithAllThatItHolds) {
    put("data/Vorq/Library/saved-notes.json");
    EXPECT_TRUE(discard(m_folder.filePath("data/Vorq")));
    EXPECT_FALSE(QFile::exists(m_folder.filePath("data/Vorq")));
    EXPECT_TRUE(QFile::exists(m_folder.filePath("data/Trash/files/Vorq/Library/saved-notes.json")));
}

TEST_F(DiscardTest, WhereThereIsNoTrashItGoesForGood) {
    takeTrashAway();
    const QString file = put("one.txt");
    put("folder/inner/two.txt");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir().mkpath(m_folder.filePath("current")));
    ASSERT_TRUE(QDir::setCurrent(m_folder.filePath("current")));
    EXPECT_TRUE(discard(file));
    EXPECT_TRUE(discard(m_folder.filePath("folder")));
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_FALSE(QFile::exists(m_folder.filePath("folder")));
    EXPECT_TRUE(QDir().isEmpty()) << "put where the program happens to run";
    QDir::setCurrent(before);
}

TEST_F(DiscardTest, OfALinkOnlyTheLinkGoes) {
    put("elsewhere/notes.json");
    const QString link = m_folder.filePath("link");
    for (const bool hasTrash : {true, false}) {
        if (!hasTrash) takeTrashAway();
        ASSERT_TRUE(QFile::link(m_folder.filePath("elsewhere"), link));
        EXPECT_TRUE(discard(link));
        EXPECT_FALSE(QFileInfo(link).isSymLink());
        EXPECT_TRUE(QFile::exists(m_folder.filePath("elsewhere/notes.json")));
    }
    ASSERT_TRUE(QFile::link(m_folder.filePath("nowhere"), link));
    EXPECT_TRUE(discard(link));
    EXPECT_FALSE(QFileInfo(link).isSymLink());
}

TEST_F(DiscardTest, WhatIsNotThereCountsAsGone) {
    EXPECT_TRUE(discard(m_folder.filePath("nothing")));
    EXPECT_TRUE(removeForGood(m_folder.filePath("nothing")));
    EXPECT_TRUE(discard({}));
    EXPECT_TRUE(trashed().isEmpty());
}

TEST_F(DiscardTest, ForGoodLeavesNothingInTheTrash) {
    put("data/cache/page.qmlc");
    EXPECT_TRUE(removeForGood(m_folder.filePath("data/cache")));
    EXPECT_FALSE(QFile::exists(m_folder.filePath("data/cache")));
    EXPECT_TRUE(trashed().isEmpty());
}

// Not even the administrator unlinks anything there.
TEST_F(DiscardTest, SaysWhyItStays) {
    const auto outcome = removeForGood("/proc/self/status");
    ASSERT_FALSE(outcome);
    EXPECT_FALSE(outcome.error().isEmpty());
    EXPECT_FALSE(discard("/proc/self/attr"));
}

} // namespace
} // namespace vorq
