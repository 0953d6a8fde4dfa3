#include "platform/linux/desktop/XdgPaths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// Relative values are invalid by the convention and count as unset.
QString folderFromEnvironment(const char* variable, const QString& fallback) {
    const QString value = qEnvironmentVariable(variable);
    return QDir::cleanPath(QDir::isAbsolutePath(value) ? value : fallback);
}

} // namespace

QString XdgPaths::home() const {
    return userHome();
}

QString XdgPaths::executableFolder() const {
    return QCoreApplication::applicationDirPath();
}

QString XdgPaths::resourcesFolder() const {
    return QDir::cleanPath(executableFolder() + "/../share/vorq");
}

QString XdgPaths::applicationSupportFolder() const {
    return folderFromEnvironment("XDG_DATA_HOME", home() + "/.local/share");
}

QString XdgPaths::settingsFolder() const {
    return folderFromEnvironment("XDG_CONFIG_HOME", home() + "/.config") + "/Vorq";
}

// Qt keeps its compiled pages there, under the name of the program.
QString XdgPaths::cacheFolder() const {
    return folderFromEnvironment("XDG_CACHE_HOME", home() + "/.cache") + "/vorq";
}

// Without the variable, the folder that Qt gives is the root of the file system.
QString userHome() {
    const passwd* const user =
        qEnvironmentVariableIsEmpty("HOME") ? ::getpwuid(::geteuid()) : nullptr;
    if (user == nullptr || user->pw_dir == nullptr || *user->pw_dir != '/') return QDir::homePath();
    return QDir::cleanPath(QFile::decodeName(user->pw_dir));
}

QString configurationFolder(const AppPaths& paths) {
    return QFileInfo(paths.settingsFolder()).path();
}

QString settingsPath(const AppPaths& paths) {
    return paths.settingsFolder() + u"/settings.json"_s;
}

} // namespace vorq
