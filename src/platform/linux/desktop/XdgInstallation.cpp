#include "platform/linux/desktop/XdgInstallation.h"

#include "platform/AppPaths.h"
#include "platform/linux/desktop/UrlScheme.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <utility>

namespace vorq {
namespace {

const QString binaryFile = QStringLiteral("/bin/vorq");
const QString share = QStringLiteral("/share");
const QString menuEntry = QStringLiteral("/applications/com.vorq.desk.desktop");

const QStringList installedFiles = {
    binaryFile,
    QStringLiteral("/bin/vorq-gateway"),
    QStringLiteral("/lib/systemd/user/vorq.service"),
    QStringLiteral("/lib/systemd/user/vorq-gateway.service"),
    share + menuEntry,
    QStringLiteral("/share/metainfo/com.vorq.desk.metainfo.xml"),
    QStringLiteral("/share/icons/hicolor/scalable/apps/com.vorq.desk.svg"),
    QStringLiteral("/share/icons/hicolor/symbolic/apps/com.vorq.desk-symbolic.svg"),
    QStringLiteral("/share/dbus-1/services/com.vorq.desk.service"),
    QStringLiteral("/share/man/man1/vorq.1"),
    QStringLiteral("/share/man/man1/vorq-gateway.1"),
    QStringLiteral("/share/bash-completion/completions/vorq"),
    QStringLiteral("/share/bash-completion/completions/vorq-gateway"),
    QStringLiteral("/share/zsh/site-functions/_vorq"),
    QStringLiteral("/share/zsh/site-functions/_vorq-gateway"),
    QStringLiteral("/share/fish/vendor_completions.d/vorq.fish"),
    QStringLiteral("/share/fish/vendor_completions.d/vorq-gateway.fish")};

// A program by itself is somebody's work or another's of the same name, and an entry by itself is
// what other kinds of packages show to the desktop or what the program has written for its links.
bool isInstalledIn(const QString& prefix) {
    return QFile::exists(prefix + binaryFile) && QFile::exists(prefix + share + menuEntry) &&
           !UrlScheme::isWrittenAtStart(prefix + share + menuEntry);
}

QString realFolderOf(const QString& path) {
    return QFileInfo(QFileInfo(path).path()).canonicalFilePath();
}

} // namespace

XdgInstallation::XdgInstallation(const QString& executable, const QStringList& dataFolders,
                                 QString systemPrefix)
    : m_executable(QDir::cleanPath(executable)), m_systemPrefix(std::move(systemPrefix)) {
    for (const QString& folder : dataFolders)
        if (QDir::isAbsolutePath(folder)) m_dataFolders += QDir::cleanPath(folder);
}

QStringList XdgInstallation::dataFolders(const AppPaths& paths) {
    QStringList all{paths.applicationSupportFolder()};
    const QString shared = qEnvironmentVariable("XDG_DATA_DIRS");
    all += shared.isEmpty()
               ? QStringList{QStringLiteral("/usr/local/share"), QStringLiteral("/usr/share")}
               : shared.split(u':', Qt::SkipEmptyParts);
    return all;
}

// Also by way of a link: /bin may be /usr/bin. What has a folder of its own below the system's is
// not the system's, as /usr/local is not.
bool XdgInstallation::isOfSystem(const QString& path) const {
    const QString folder = realFolderOf(path);
    const QString local = m_systemPrefix + QStringLiteral("/local/");
    return folder.startsWith(m_systemPrefix + u'/') && !folder.startsWith(local);
}

QStringList XdgInstallation::prefixes() const {
    QStringList all;
    if (m_executable.endsWith(binaryFile)) all += m_executable.chopped(binaryFile.size());
    for (const QString& folder : m_dataFolders)
        if (folder.endsWith(share)) all += folder.chopped(share.size());
    all.removeIf([this](const QString& prefix) {
        return prefix.isEmpty() || !isInstalledIn(prefix) || isOfSystem(prefix + binaryFile);
    });
    all.removeDuplicates();
    return all;
}

QStringList XdgInstallation::files() const {
    QStringList all;
    for (const QString& prefix : prefixes())
        for (const QString& file : installedFiles)
            all += prefix + file;
    // The program writes one by itself, for its links.
    if (!m_dataFolders.isEmpty()) all += m_dataFolders.front() + menuEntry;
    all.removeDuplicates();
    all.removeIf([this](const QString& file) { return isOfSystem(file); });
    return all;
}

QStringList XdgInstallation::advice() const {
    QStringList sentences;
    const QString ofSystem = m_systemPrefix + binaryFile;
    if (QFile::exists(ofSystem))
        sentences +=
            QCoreApplication::translate(
                "XdgInstallation", "%1 belongs to your system. Remove it where you installed it "
                                   "from.")
                .arg(ofSystem);
    if (m_executable != ofSystem && !files().contains(m_executable))
        sentences += QCoreApplication::translate("XdgInstallation",
                                                 "%1 was not installed and stays where it is.")
                         .arg(m_executable);
    return sentences;
}

} // namespace vorq
