#include "platform/linux/XdgInstallation.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <utility>

namespace vorq {
namespace {

const QString share = QStringLiteral("/share");
const QString systemPrefix = QStringLiteral("/usr");
const QString desktopEntry = QStringLiteral("/applications/com.vorq.desk.desktop");

const QStringList filesOfPrefix = {QStringLiteral("/bin/vorq"), QStringLiteral("/bin/vorq-gateway"),
                                   QStringLiteral("/lib/systemd/user/vorq.service")};
const QStringList filesOfData = {
    desktopEntry, QStringLiteral("/metainfo/com.vorq.desk.metainfo.xml"),
    QStringLiteral("/icons/hicolor/scalable/apps/com.vorq.desk.svg"),
    QStringLiteral("/icons/hicolor/symbolic/apps/com.vorq.desk-symbolic.svg"),
    QStringLiteral("/dbus-1/services/com.vorq.desk.service")};

// "" where it has none.
QString prefixOf(const QString& dataFolder) {
    return dataFolder.endsWith(share) ? dataFolder.chopped(share.size()) : QString();
}

} // namespace

XdgInstallation::XdgInstallation(QString executableFolder, QStringList dataFolders)
    : m_executableFolder(QDir::cleanPath(executableFolder)),
      m_dataFolders(std::move(dataFolders)) {}

QStringList XdgInstallation::standardDataFolders() {
    return QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
}

// A build folder has no entry for the desktop: it is somebody's work and no installation.
QStringList XdgInstallation::dataFolders() const {
    QStringList all;
    const QString beside = QFileInfo(m_executableFolder).path() + share;
    if (m_executableFolder.endsWith(QStringLiteral("/bin")) && QFile::exists(beside + desktopEntry))
        all += beside;
    for (const QString& folder : m_dataFolders)
        all += QDir::cleanPath(folder);
    all.removeIf([](const QString& folder) {
        return !QDir::isAbsolutePath(folder) || prefixOf(folder) == systemPrefix;
    });
    all.removeDuplicates();
    return all;
}

QStringList XdgInstallation::files() const {
    QStringList all;
    for (const QString& folder : dataFolders()) {
        // Other kinds of packages show their entry to the desktop from a place of their own.
        const QString prefix = prefixOf(folder);
        const bool isWhole = QFile::exists(prefix + filesOfPrefix.front());
        if (!isWhole && folder != QDir::cleanPath(m_dataFolders.value(0))) continue;
        if (isWhole)
            for (const QString& file : filesOfPrefix)
                all += prefix + file;
        for (const QString& file : filesOfData)
            all += folder + file;
    }
    return all;
}

QString XdgInstallation::advice() const {
    if (m_executableFolder != systemPrefix + QStringLiteral("/bin")) return {};
    return QStringLiteral(
        "The program itself belongs to a package of your system. Remove it there.");
}

} // namespace vorq
