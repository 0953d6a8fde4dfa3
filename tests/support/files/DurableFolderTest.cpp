#include "support/files/DurableFolder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace vorq {
namespace {

TEST(DurableFolder, IsMadeWithAllThatItIsIn) {
    const QTemporaryDir root;
    const QString folder = root.filePath("a/b/c");
    EXPECT_TRUE(ensureFolder(folder));
    EXPECT_TRUE(QDir(folder).exists());
    EXPECT_TRUE(ensureFolder(folder)) << "once more changes nothing";
}

TEST(DurableFolder, SaysWhatIsInTheWay) {
    const QTemporaryDir root;
    QFile file(root.filePath("a"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    for (const QString& path : {root.filePath("a"), root.filePath("a/b")}) {
        const auto made = ensureFolder(path);
        ASSERT_FALSE(made);
        EXPECT_EQ(made.error(), "Not a directory");
    }
}

TEST(DurableFolder, BehindALinkIsTheOneItLeadsTo) {
    const QTemporaryDir root;
    ASSERT_TRUE(QFile::link(root.path(), root.filePath("link")));
    EXPECT_TRUE(ensureFolder(root.filePath("link")));
    EXPECT_TRUE(ensureFolder(root.filePath("link/inner")));
    EXPECT_TRUE(QDir(root.filePath("inner")).exists());
}

} // namespace
} // namespace vorq
