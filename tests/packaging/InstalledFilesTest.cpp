// Whether the uninstaller knows all files of an installation.

#include "platform/linux/desktop/XdgInstallation.h"

#include <QDir>
#include <QDirIterator>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace vorq {
namespace {

TEST(InstalledFiles, AreAllKnownToTheProgram) {
    const QTemporaryDir prefix;
    QProcess install;
    install.start(VORQ_CMAKE, {"--install", VORQ_BUILD_FOLDER, "--prefix", prefix.path()});
    ASSERT_TRUE(install.waitForFinished() && install.exitCode() == 0)
        << install.readAllStandardError().toStdString();
    QStringList installed;
    for (QDirIterator each(prefix.path(), QDir::Files, QDirIterator::Subdirectories);
         each.hasNext();)
        installed += each.next();
    EXPECT_THAT(XdgInstallation(prefix.filePath("bin/vorq"), {}).files(),
                testing::UnorderedElementsAreArray(installed));
}

} // namespace
} // namespace vorq
