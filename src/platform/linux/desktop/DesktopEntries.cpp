#include "platform/linux/desktop/DesktopEntries.h"

#include "platform/linux/desktop/XdgPaths.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLocale>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr qint64 largestFile = 256 * 1024;

using Fields = QHash<QString, QString>;

// Of the group "Desktop Entry", which comes first.
Fields fieldsOf(const QString& text) {
    Fields fields;
    bool isInGroup = false;
    for (const QStringView raw : QStringView(text).split(u'\n')) {
        const QStringView line = raw.trimmed();
        if (line.startsWith(u'[')) {
            if (isInGroup) break;
            isInGroup = line == u"[Desktop Entry]";
        } else if (isInGroup && !line.startsWith(u'#')) {
            const qsizetype equals = line.indexOf(u'=');
            if (equals > 0)
                fields.insert(line.first(equals).trimmed().toString(),
                              line.sliced(equals + 1).trimmed().toString());
        }
    }
    return fields;
}

QString localised(const Fields& fields, const QString& key, const QString& language) {
    for (const QString& tag : {language, language.section(u'_', 0, 0)}) {
        const auto found = fields.constFind(u"%1[%2]"_s.arg(key, tag));
        if (found != fields.cend()) return *found;
    }
    return fields.value(key);
}

// The first word of a command line, past "env" and its settings.
QString executableOf(const QString& commandLine) {
    for (QString word : commandLine.split(u' ', Qt::SkipEmptyParts)) {
        word.remove(u'"');
        const QString name = word.section(u'/', -1);
        if (name != u"env" && !name.contains(u'=')) return name;
    }
    return {};
}

QString stampOf(const QString& folder) {
    const QFileInfo info(folder);
    return info.exists() ? QString::number(info.lastModified().toMSecsSinceEpoch()) : QString();
}

} // namespace

std::optional<DesktopEntry> readDesktopEntry(const QString& id, const QString& text,
                                             const QString& language) {
    const Fields fields = fieldsOf(text);
    if (fields.value(u"Type"_s) != u"Application") return std::nullopt;
    if (fields.value(u"Hidden"_s) == u"true") return std::nullopt;
    return DesktopEntry{.id = id,
                        .name = localised(fields, u"Name"_s, language),
                        .startupWmClass = fields.value(u"StartupWMClass"_s),
                        .executable = executableOf(fields.value(u"Exec"_s))};
}

DesktopEntries::DesktopEntries(QStringList folders) : m_folders(std::move(folders)) {}

QStringList DesktopEntries::standardFolders() {
    const auto valueOr = [](const char* variable, const QString& fallback) {
        const QString value = qEnvironmentVariable(variable);
        return value.isEmpty() ? fallback : value;
    };
    QStringList folders{valueOr("XDG_DATA_HOME", userHome() + "/.local/share")};
    folders +=
        valueOr("XDG_DATA_DIRS", u"/usr/local/share:/usr/share"_s).split(u':', Qt::SkipEmptyParts);
    for (QString& folder : folders)
        folder = QDir::cleanPath(folder + "/applications");
    folders.removeDuplicates();
    return folders;
}

std::optional<DesktopEntry> DesktopEntries::withId(const QString& id) {
    refresh();
    return find(m_byId, id);
}

std::optional<DesktopEntry> DesktopEntries::ofWindowClass(const QString& windowClass) {
    refresh();
    for (const auto* index : {&m_byWindowClass, &m_byId, &m_byLastPart})
        if (auto entry = find(*index, windowClass)) return entry;
    return std::nullopt;
}

std::optional<DesktopEntry> DesktopEntries::ofExecutable(const QString& name) {
    refresh();
    return find(m_byExecutable, name);
}

void DesktopEntries::refresh() {
    QStringList stamps;
    for (const QString& folder : std::as_const(m_folders))
        stamps += stampOf(folder);
    if (stamps == m_stamps) return;
    m_stamps = stamps;
    m_entries.clear();
    for (auto* index : {&m_byId, &m_byWindowClass, &m_byLastPart, &m_byExecutable})
        index->clear();
    for (const QString& folder : std::as_const(m_folders))
        readFolder(folder);
}

void DesktopEntries::readFolder(const QString& folder) {
    const QDir root(folder);
    QDirIterator files(folder, {u"*.desktop"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        QString id = root.relativeFilePath(file.fileName()).replace(u'/', u'-');
        id.chop(8);
        if (m_byId.contains(id.toLower()) || !file.open(QIODevice::ReadOnly)) continue;
        const QString text = QString::fromUtf8(file.read(largestFile));
        const auto entry = readDesktopEntry(id, text, QLocale::system().name());
        if (!entry) continue;
        const std::size_t place = m_entries.size();
        m_entries.push_back(*entry);
        m_byId.insert(id.toLower(), place);
        const auto addOnce = [place](QHash<QString, std::size_t>& index, const QString& key) {
            if (!key.isEmpty() && !index.contains(key.toLower()))
                index.insert(key.toLower(), place);
        };
        addOnce(m_byWindowClass, entry->startupWmClass);
        addOnce(m_byLastPart, id.section(u'.', -1));
        addOnce(m_byExecutable, entry->executable);
    }
}

std::optional<DesktopEntry> DesktopEntries::find(const QHash<QString, std::size_t>& index,
                                                 const QString& key) const {
    const auto found = index.constFind(key.toLower());
    return found == index.cend() ? std::nullopt : std::optional(m_entries[*found]);
}

} // namespace vorq
