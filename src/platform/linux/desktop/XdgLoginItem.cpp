#include "platform/linux/desktop/XdgLoginItem.h"

#include "platform/Defaults.h"
#include "support/files/DurableFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString registeredKey = u"vorq.loginItem.registered"_s;

const QString launchOptions = u" --background --launched-at-login"_s;

// The entry for a program as it stands in the Exec line.
QString autostartEntry(const QString& program) {
    return u"[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Vorq\n"
           "Comment=Answers about what you highlight\n"
           "Icon=com.vorq.desk\n"
           "Exec=%1%2\n"
           "Terminal=false\n"
           "X-GNOME-Autostart-enabled=true\n"_s.arg(program, launchOptions);
}

// As we wrote it, for a program at any place.
bool isUnedited(const QString& entry) {
    for (const QString& line : entry.split(u'\n')) {
        if (!line.startsWith(u"Exec=") || !line.endsWith(launchOptions)) continue;
        const QString program = line.chopped(launchOptions.size()).sliced(5);
        const bool isOneWord = program.startsWith(u'"') || !program.contains(u' ');
        return isOneWord && entry == autostartEntry(program);
    }
    return false;
}

bool isPlain(QChar character) {
    return character.isLetterOrNumber() || u"/.-_+@:,"_s.contains(character);
}

} // namespace

QString desktopExecWord(const QString& path) {
    QString word;
    for (const QChar character : path) {
        // Once for the quoted word, and again for the value as a whole.
        if (u"\"`$"_s.contains(character)) word += u"\\\\"_s;
        if (character == u'\\') word += u"\\\\\\"_s;
        if (character == u'%') word += u'%';
        word += character;
    }
    return std::ranges::all_of(path, isPlain) ? path : u'"' + word + u'"';
}

XdgLoginItem::XdgLoginItem(Defaults& defaults, QString configurationFolder, QString executable)
    : m_defaults(defaults),
      m_configurationFolder(std::move(configurationFolder)),
      m_executable(std::move(executable)) {}

QString XdgLoginItem::entryPath() const {
    return m_configurationFolder + u"/autostart/com.vorq.desk.desktop"_s;
}

std::expected<void, QString> XdgLoginItem::registerAtLogin() {
    QFile present(entryPath());
    const bool isThere = present.exists();
    if (!isThere && m_defaults.boolean(registeredKey).value_or(false)) return {};
    const QString wanted = autostartEntry(desktopExecWord(m_executable));
    if (isThere) {
        if (!present.open(QIODevice::ReadOnly)) return std::unexpected(present.errorString());
        const QString text = QString::fromUtf8(present.readAll());
        // Switching it off is an edit, too.
        if (text == wanted || !isUnedited(text)) return {};
    }
    QDir().mkpath(m_configurationFolder + u"/autostart"_s);
    const FileOutcome written = replaceFile(entryPath(), wanted.toUtf8(), sharedFile);
    if (!written) return std::unexpected(written.error());
    m_defaults.setBoolean(registeredKey, true);
    return {};
}

std::expected<void, QString> XdgLoginItem::unregisterAtLogin() {
    QFile file(entryPath());
    if (file.exists() && !file.remove()) return std::unexpected(file.errorString());
    m_defaults.remove(registeredKey);
    QFile wanted(m_configurationFolder +
                 u"/systemd/user/graphical-session.target.wants/vorq.service"_s);
    const bool isThere = wanted.exists() || QFileInfo(wanted).isSymLink();
    if (isThere && !wanted.remove()) return std::unexpected(wanted.errorString());
    return {};
}

} // namespace vorq
