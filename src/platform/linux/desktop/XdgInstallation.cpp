#include "platform/linux/desktop/XdgInstallation.h"

#include "platform/AppPaths.h"
#include "platform/linux/desktop/UrlScheme.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString binaryFile = u"/bin/vorq"_s;
const QString share = u"/share"_s;
const QString menuEntry = u"/applications/com.vorq.desk.desktop"_s;

const QStringList installedFiles = {
    binaryFile,
    u"/bin/vorq-gateway"_s,
    u"/libexec/vorq-documents"_s,
    u"/libexec/vorq-test-window"_s,
    u"/lib/systemd/user/vorq.service"_s,
    u"/lib/systemd/user/vorq-gateway.service"_s,
    share + menuEntry,
    u"/share/metainfo/com.vorq.desk.metainfo.xml"_s,
    u"/share/icons/hicolor/scalable/apps/com.vorq.desk.svg"_s,
    u"/share/icons/hicolor/symbolic/apps/com.vorq.desk-symbolic.svg"_s,
    u"/share/icons/hicolor/16x16/apps/com.vorq.desk.png"_s,
    u"/share/icons/hicolor/22x22/apps/com.vorq.desk.png"_s,
    u"/share/icons/hicolor/24x24/apps/com.vorq.desk.png"_s,
    u"/share/icons/hicolor/32x32/apps/com.vorq.desk.png"_s,
    u"/share/icons/hicolor/48x48/apps/com.vorq.desk.png"_s,
    u"/share/icons/hicolor/64x64/apps/com.vorq.desk.png"_s,
    u"/share/icons/hicolor/96x96/apps/com.vorq.desk.png"_s,
    u"/share/icons/hicolor/128x128/apps/com.vorq.desk.png"_s,
    u"/share/icons/hicolor/256x256/apps/com.vorq.desk.png"_s,
    u"/share/icons/hicolor/512x512/apps/com.vorq.desk.png"_s,
    u"/share/dbus-1/services/com.vorq.desk.service"_s,
    u"/share/man/man1/vorq.1"_s,
    u"/share/man/man1/vorq-gateway.1"_s,
    u"/share/bash-completion/completions/vorq"_s,
    u"/share/bash-completion/completions/vorq-gateway"_s,
    u"/share/zsh/site-functions/_vorq"_s,
    u"/share/zsh/site-functions/_vorq-gateway"_s,
    u"/share/fish/vendor_completions.d/vorq.fish"_s,
    u"/share/fish/vendor_completions.d/vorq-gateway.fish"_s};

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
    all += shared.isEmpty() ? QStringList{u"/usr/local/share"_s, u"/usr/share"_s}
                            : shared.split(u':', Qt::SkipEmptyParts);
    return all;
}

// Also by way of a link: /bin may be /usr/bin. What has a folder of its own below the system's is
// not the system's, as /usr/local is not.
bool XdgInstallation::isOfSystem(const QString& path) const {
    const QString folder = realFolderOf(path);
    const QString local = m_systemPrefix + u"/local/"_s;
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

bool XdgInstallation::isInstalled() const {
    if (!m_executable.endsWith(binaryFile)) return false;
    const QString prefix = m_executable.chopped(binaryFile.size());
    return m_dataFolders.contains(prefix + share) && isInstalledIn(prefix);
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
