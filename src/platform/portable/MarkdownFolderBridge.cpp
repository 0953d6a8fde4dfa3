#include "platform/portable/MarkdownFolderBridge.h"

#include "support/files/DurableFile.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr QStringView ending = u".md";
constexpr qsizetype longestName = 200; // bytes; file systems take 255 with ending and number
constexpr qint64 longestHead = 4096;   // bytes that are read for a title
constexpr int mostNames = 10'000;      // tried for one title

// What stands before the first point.
QStringView stemOf(QStringView name) {
    const qsizetype point = name.indexOf(u'.');
    return point < 0 ? name : name.first(point);
}

// In their names programs of other systems cannot open files, whatever the ending.
bool isReserved(QStringView name) {
    static constexpr auto devices = std::to_array<QStringView>({u"con", u"prn", u"aux", u"nul"});
    const QString device = trimmed(stemOf(name)).toString().toLower();
    return std::find(devices.begin(), devices.end(), QStringView(device)) != devices.end() ||
           (device.size() == 4 && (device.startsWith("com") || device.startsWith("lpt")) &&
            device.back().isDigit());
}

bool isUnsafe(QChar unit) {
    return unit.unicode() < 0x20 || unit.unicode() == 0x7F || unit.isSurrogate() ||
           QStringView(u"/\\:*?\"<>|").contains(unit) || isNewline(unit.unicode());
}

// Each run of unsafe characters becomes one blank.
QString withSafeCharacters(QStringView title) {
    QString name;
    for (const QStringView character : splitGraphemes(title)) {
        const bool isPair = character.size() > 1 && character.front().isHighSurrogate() &&
                            character[1].isLowSurrogate();
        const bool isSafe = isPair || std::none_of(character.begin(), character.end(), isUnsafe);
        if (isSafe)
            name += character;
        else
            name += u' ';
    }
    return withSingleBlanks(name.normalized(QString::NormalizationForm_C));
}

QString ofAtMost(QStringView name, qsizetype bytes) {
    QString result;
    for (const QStringView character : splitGraphemes(name)) {
        bytes -= character.toUtf8().size();
        if (bytes < 0) break;
        result += character;
    }
    return result;
}

// Hidden files begin with points, and some systems drop points and blanks at the end.
QStringView withoutOuterPoints(QStringView name) {
    while (!name.isEmpty() &&
           (name.front() == u'.' || isWhitespaceOrNewline(name.front().unicode())))
        name = name.sliced(1);
    while (!name.isEmpty() && (name.back() == u'.' || isWhitespaceOrNewline(name.back().unicode())))
        name.chop(1);
    return name;
}

// Names that a system without letter case would take for one are equal.
QString folded(const QString& name) {
    return name.normalized(QString::NormalizationForm_C).toCaseFolded();
}

std::optional<QByteArray> contentOf(const QString& path, qint64 most = -1) {
    QFile file(path);
    if (path.isEmpty() || !QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return most < 0 ? file.readAll() : file.read(most);
}

QString textOf(const QByteArray& content) {
    return QString::fromUtf8(content); // a byte order mark goes
}

// The heading that the file begins with, or the name of the file.
QString titleOf(const QFileInfo& file) {
    const QString head = textOf(contentOf(file.filePath(), longestHead).value_or(QByteArray()));
    const QStringView line = firstLine(head);
    if (line.startsWith(u"# ")) {
        const QString title = trimmed(line.sliced(2)).toString();
        if (!title.isEmpty()) return title;
    }
    return file.completeBaseName();
}

// The content with the text below an empty line, in its own kind of line breaks.
QByteArray withAppended(const QByteArray& content, QStringView text) {
    const QByteArray lineBreak = content.contains("\r\n") ? "\r\n" : "\n";
    QByteArray result = content;
    if (!result.isEmpty() && !result.endsWith('\n')) result += lineBreak;
    if (!result.isEmpty()) result += lineBreak;
    QByteArray added = trimmed(text).toUtf8();
    added.replace("\r\n", "\n").replace('\r', '\n').replace("\n", lineBreak);
    return result + added + lineBreak;
}

// The first line of a reply may be a heading; its text is the title.
QStringView withoutHeadingMarks(QStringView line) {
    constexpr qsizetype deepest = 6;
    const auto marks = std::ranges::find_if(line, [](QChar unit) { return unit != u'#'; });
    const qsizetype level = marks - line.begin();
    if (level < 1 || level > deepest || level == line.size() || line[level] != u' ') return line;
    return trimmed(line.sliced(level));
}

// The heading above the text, or in place of the first line if that says the same.
QString withHeading(const QString& heading, QStringView body) {
    const QStringView text = trimmed(body);
    const QStringView line = firstLine(text);
    const bool isRepeated = withoutHeadingMarks(trimmed(line)) == heading;
    const QString separator = text.isEmpty() || isRepeated ? QString() : u"\n\n"_s;
    return u"# "_qs + heading + separator + text.sliced(isRepeated ? line.size() : 0).toString();
}

// False if there is a file of this name already.
bool makeEmptyFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::NewOnly,
                     QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

} // namespace

MarkdownFolderBridge::MarkdownFolderBridge(QString folder) : m_folder(std::move(folder)) {}

QString MarkdownFolderBridge::fileNameFor(QStringView title) {
    const QString safe = withSafeCharacters(title);
    const QString cut = ofAtMost(withoutOuterPoints(safe), longestName);
    const QString name = withoutOuterPoints(cut).toString();
    if (name.isEmpty()) return notesbridge::untitled;
    return isReserved(name) ? QString(name).insert(stemOf(name).size(), u'_') : name;
}

QString MarkdownFolderBridge::pathOf(const QString& id) const {
    if (m_folder.isEmpty() || !id.endsWith(ending) || id.startsWith(u'.') || id.contains(u'/') ||
        id.contains(QChar(u'\0')))
        return {};
    return m_folder + u'/' + id;
}

std::vector<AppleNoteSummary> MarkdownFolderBridge::listNotes(int limit) {
    const QFileInfoList files =
        QDir(m_folder).entryInfoList({u"*.md"_s}, QDir::Files | QDir::Readable, QDir::Time);
    const int count = std::clamp(limit, 1, notesbridge::mostNotes);
    std::vector<AppleNoteSummary> notes;
    for (const QFileInfo& file : files) {
        if (m_folder.isEmpty() || std::ssize(notes) == count) break;
        if (!pathOf(file.fileName()).isEmpty()) notes.push_back({file.fileName(), titleOf(file)});
    }
    return notes;
}

std::optional<QString> MarkdownFolderBridge::noteBody(const QString& id) {
    const std::optional<QByteArray> content = contentOf(pathOf(id));
    if (!content) return std::nullopt;
    const QString text = textOf(*content);
    return trimmed(text).isEmpty() ? std::nullopt : std::optional(text);
}

std::optional<QString> MarkdownFolderBridge::reserveName(const QString& title) const {
    QSet<QString> taken;
    for (const QString& name : QDir(m_folder).entryList(QDir::AllEntries | QDir::Hidden))
        taken.insert(folded(name));
    const QString stem = fileNameFor(title);
    for (int number = 1; number <= mostNames; ++number) {
        const QString suffix = number == 1 ? QString() : u" (%1)"_s.arg(number);
        const QString name = stem + suffix + ending.toString();
        if (taken.contains(folded(name))) continue;
        if (makeEmptyFile(m_folder + u'/' + name)) return name;
        if (!QFileInfo::exists(m_folder + u'/' + name)) return std::nullopt; // not writable
    }
    return std::nullopt;
}

std::expected<QString, BlockingNotes::Error> MarkdownFolderBridge::createNote(const QString& title,
                                                                              const QString& body) {
    const Error error =
        u"Couldn’t create the note. Vorq cannot write to the folder %1."_s.arg(m_folder);
    if (m_folder.isEmpty() || !QDir().mkpath(m_folder)) return std::unexpected(error);
    const QString line = withoutHeadingMarks(notesbridge::inOneLine(title)).toString();
    const QString heading = line.isEmpty() ? notesbridge::untitled : line;
    const std::optional<QString> name = reserveName(heading);
    if (!name) return std::unexpected(error);
    const QString path = m_folder + u'/' + *name;
    removeLeftovers(path);
    if (replaceFile(path, withAppended({}, withHeading(heading, body)))) return *name;
    QFile::remove(path);
    return std::unexpected(error);
}

std::expected<void, BlockingNotes::Error> MarkdownFolderBridge::appendToNote(const QString& id,
                                                                             const QString& body) {
    if (trimmed(body).isEmpty()) return std::unexpected(notesbridge::nothingToAppend);
    // What a link leads to is changed, not the link.
    const QString path = QFileInfo(pathOf(id)).canonicalFilePath();
    const std::optional<QByteArray> content = contentOf(path);
    if (!content || !replaceFile(path, withAppended(*content, body)))
        return std::unexpected(notesbridge::appendFailed);
    return {};
}

// The first note makes the folder, and those above it.
BlockingNotes::Reached MarkdownFolderBridge::reach() {
    QFileInfo nearest(m_folder);
    while (nearest.isAbsolute() && !nearest.exists() && !nearest.isRoot())
        nearest = QFileInfo(nearest.path());
    if (nearest.isAbsolute() && nearest.isDir() && nearest.isWritable())
        return u"a folder of Markdown files"_s;
    return std::unexpected(u"The folder for notes cannot be written."_s);
}

} // namespace vorq
