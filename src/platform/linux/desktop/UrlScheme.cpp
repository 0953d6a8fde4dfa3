#include "platform/linux/desktop/UrlScheme.h"

#include "platform/linux/desktop/XdgLoginItem.h"
#include "support/files/DurableFile.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString entryName = u"com.vorq.desk.desktop"_s;
const QByteArray ownMark = "X-Vorq-Written-At-Start=true";

QByteArray entryAt(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Only for links: an entry in the menu is for the installation to make.
QByteArray handlerEntry(const QString& executable) {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Vorq\n"
           "Icon=com.vorq.desk\n"
           "Exec=" +
           desktopExecWord(executable).toUtf8() +
           " %u\n"
           "Terminal=false\n"
           "NoDisplay=true\n"
           "StartupWMClass=vorq\n"
           "MimeType=x-scheme-handler/vorq;\n" +
           ownMark + "\n";
}

} // namespace

UrlScheme::UrlScheme(QStringList applicationFolders, QString executable)
    : m_folders(std::move(applicationFolders)), m_executable(std::move(executable)) {}

bool UrlScheme::isInstalledForAll() const {
    return std::ranges::any_of(m_folders.mid(1), [](const QString& folder) {
        return QFile::exists(folder + u'/' + entryName);
    });
}

bool UrlScheme::isWrittenAtStart(const QString& path) {
    return entryAt(path).contains(ownMark);
}

bool UrlScheme::ensureEntry() const {
    if (m_folders.isEmpty()) return false;
    const QString path = m_folders.front() + u'/' + entryName;
    const QByteArray present = entryAt(path);
    const bool isOurs = present.contains(ownMark);
    if (isInstalledForAll()) return isOurs && QFile::remove(path);
    const QByteArray wanted = handlerEntry(m_executable);
    if (present == wanted || (!present.isEmpty() && !isOurs)) return false;
    QDir().mkpath(m_folders.front());
    return replaceFile(path, wanted, sharedFile).has_value();
}

void UrlScheme::makeDefault() {
    QProcess process;
    process.setProgram(u"xdg-mime"_s);
    process.setArguments({u"default"_s, entryName, u"x-scheme-handler/vorq"_s});
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.startDetached();
}

} // namespace vorq
