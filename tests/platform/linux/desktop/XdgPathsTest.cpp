#include "platform/linux/desktop/XdgPaths.h"

#include <QDir>

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

namespace vorq {
namespace {

TEST(XdgPaths, FollowsTheEnvironment) {
    qputenv("XDG_DATA_HOME", "/somewhere/data/");
    qputenv("XDG_CONFIG_HOME", "/somewhere/config");
    const XdgPaths paths;
    EXPECT_EQ(paths.applicationSupportFolder(), "/somewhere/data");
    EXPECT_EQ(paths.settingsFolder(), "/somewhere/config/Vorq");
}

TEST(XdgPaths, IgnoresUnsetAndRelativeValues) {
    qunsetenv("XDG_DATA_HOME");
    qputenv("XDG_CONFIG_HOME", "relative");
    const XdgPaths paths;
    EXPECT_EQ(paths.applicationSupportFolder(), QDir::homePath() + "/.local/share");
    EXPECT_EQ(paths.settingsFolder(), QDir::homePath() + "/.config/Vorq");
    qunsetenv("XDG_CONFIG_HOME");
}

TEST(XdgPaths, AnEmptyEnvironmentIsNoReasonToWriteIntoTheRoot) {
    const QByteArray home = qgetenv("HOME");
    qunsetenv("HOME");
    const QString found = userHome();
    const QString data = XdgPaths().applicationSupportFolder();
    qputenv("HOME", home);
    EXPECT_EQ(found, QString(::getpwuid(::geteuid())->pw_dir));
    EXPECT_EQ(data, found + "/.local/share");
}

TEST(XdgPaths, TheCacheIsThatOfTheProgram) {
    qputenv("XDG_CACHE_HOME", "/somewhere/cache");
    EXPECT_EQ(XdgPaths().cacheFolder(), "/somewhere/cache/vorq");
    qunsetenv("XDG_CACHE_HOME");
    EXPECT_EQ(XdgPaths().cacheFolder(), QDir::homePath() + "/.cache/vorq");
}

} // namespace
} // namespace vorq
