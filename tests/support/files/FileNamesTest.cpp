#include "support/files/FileNames.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

TEST(FileNames, AreThoseThatBeginAndEndInSuchAWay) {
    const QTemporaryDir folder;
    for (const char* name : {"b.json", "a.json", "a.json.new", "json", "ab", "aba"})
        ASSERT_TRUE(QFile(folder.filePath(name)).open(QIODevice::WriteOnly));
    ASSERT_TRUE(QDir(folder.path()).mkdir("folder.json"));
    const auto names = [&](const char* start, const char* end) {
        return fileNames(folder.path(), QLatin1StringView(start), QLatin1StringView(end));
    };
    EXPECT_EQ(names("", ".json"), QStringList({"a.json", "b.json"}));
    EXPECT_EQ(names("ab", "ba"), QStringList());
    EXPECT_EQ(names("a", ""), QStringList({"a.json", "a.json.new", "ab", "aba"}));
    EXPECT_EQ(fileNames("/nonexistent", ""_L1, ""_L1), QStringList());
}

} // namespace
} // namespace vorq
