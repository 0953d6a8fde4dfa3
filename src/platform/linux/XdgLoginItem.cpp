#include "platform/linux/XdgLoginItem.h"

#include "platform/Defaults.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <utility>

namespace vorq {
namespace {

const QString registeredKey = QStringLiteral("vorq.loginItem.registered");

bool isSwitchedOff(const QString& entry) {
    for (const QString& line : entry.split(u'\n')) {
        const QString setting = QString(line).remove(u' ').toLower();
        if (setting == u"hidden=true" || setting == u"x-gnome-autostart-enabled=false") return true;
    }
    return false;
}

QString entryText(const QString& executable) {
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=Vorq\n"
                          "Comment=Answers about what you highlight\n"
                          "Icon=com.vorq.desk\n"
                          "Exec=%1 --background --launched-at-login\n"
                          "Terminal=false\n"
                          "X-GNOME-Autostart-enabled=true\n")
        .arg(desktopExecWord(executable));
}

} // namespace

QString desktopExecWord(const QString& path) {
    QString word;
    for (const QChar character : path) {
        // Once for the quoted word, and again for the value as a whole.
        if (QStringLiteral("\"`$").contains(character)) word += QStringLiteral("\\\\");
        if (character == u'\\') word += QStringLiteral("\\\\\\");
        if (character == u'%') word += u'%';
        word += character;
    }
    return word == path && !path.contains(u' ') ? path : u'"' + word + u'"';
}

XdgLoginItem::XdgLoginItem(Defaults& defaults, QString configurationFolder, QString executable)
    : m_defaults(defaults),
      m_configurationFolder(std::move(configurationFolder)),
      m_executable(std::move(executable)) {}

QString XdgLoginItem::entryPath() const {
    return m_configurationFolder + QStringLiteral("/autostart/com.vorq.desk.desktop");
}

std::expected<void, QString> XdgLoginItem::registerAtLogin() {
    QFile present(entryPath());
    const bool isThere = present.exists();
    if (!isThere && m_defaults.boolean(registeredKey).value_or(false)) return {};
    const QString wanted = entryText(m_executable);
    if (isThere) {
        if (!present.open(QIODevice::ReadOnly)) return std::unexpected(present.errorString());
        const QString text = QString::fromUtf8(present.readAll());
        if (text == wanted || isSwitchedOff(text)) return {};
    }
    QDir().mkpath(m_configurationFolder + QStringLiteral("/autostart"));
    QSaveFile file(entryPath());
    const QByteArray bytes = wanted.toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return std::unexpected(file.errorString());
    m_defaults.setBoolean(registeredKey, true);
    return {};
}

std::expected<void, QString> XdgLoginItem::unregisterAtLogin() {
    QFile file(entryPath());
    if (file.exists() && !file.remove()) return std::unexpected(file.errorString());
    m_defaults.remove(registeredKey);
    QFile wanted(m_configurationFolder +
                 QStringLiteral("/systemd/user/graphical-session.target.wants/vorq.service"));
    const bool isThere = wanted.exists() || QFileInfo(wanted).isSymLink();
    if (isThere && !wanted.remove()) return std::unexpected(wanted.errorString());
    return {};
}

} // namespace vorq
