#include "platform/portable/SettingsFile.h"

#include "platform/portable/DamagedSettings.h"
#include "support/files/Discard.h"
#include "support/files/DurableFile.h"
#include "support/json/JsonWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLockFile>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>
#include <simdjson.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

const QString damagedFileKey = u"vorq.settings.damagedFile"_s;
const QString goesOn = u"goes on with those it knows"_s;
const QByteArray byteOrderMark = "\xef\xbb\xbf";

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Waits for other programs that write. Not where nobody can write: a lock that was left there would
// never go.
void lockForWriting(QLockFile& lock, const QString& folder) {
    if (!QFileInfo(folder).isWritable()) return;
    lock.setStaleLockTime(5s);
    lock.tryLock(2s);
}

// Invalid unless all of it is strings.
QVariant listOf(const simdjson::dom::array& array) {
    QStringList list;
    for (const simdjson::dom::element element : array) {
        std::string_view text;
        if (element.get_string().get(text) != simdjson::SUCCESS) return {};
        list += QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }
    return list;
}

// Invalid for what is not kept as a value.
QVariant variantOf(const simdjson::dom::element& element) {
    switch (element.type()) {
    case simdjson::dom::element_type::STRING: {
        const std::string_view text = element.get_string().value();
        return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }
    case simdjson::dom::element_type::BOOL:
        return element.get_bool().value();
    case simdjson::dom::element_type::INT64:
        return qint64{element.get_int64().value()};
    case simdjson::dom::element_type::DOUBLE:
        return element.get_double().value();
    case simdjson::dom::element_type::ARRAY:
        return listOf(element.get_array().value());
    default:
        return {};
    }
}

void write(JsonWriter& writer, const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::Bool:
        return writer.value(value.toBool());
    case QMetaType::Int:
    case QMetaType::LongLong:
        return writer.value(value.toLongLong());
    case QMetaType::Double:
        return writer.value(value.toDouble());
    case QMetaType::QStringList:
        writer.beginArray();
        for (const QString& text : value.toStringList())
            writer.value(text);
        return writer.endArray();
    default:
        return writer.value(value.toString());
    }
}

} // namespace

// Nothing for what is no object.
std::optional<SettingsFile::Content> SettingsFile::decode(const QByteArray& bytes) {
    // Which some editors put before it.
    const qsizetype skipped = bytes.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
    simdjson::dom::parser parser;
    simdjson::dom::object object;
    if (parser.parse(bytes.constData() + skipped, static_cast<std::size_t>(bytes.size() - skipped))
            .get(object) != simdjson::SUCCESS)
        return std::nullopt;
    Content content;
    for (const auto& [key, element] : object) {
        const QString name = QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
        const QVariant value = variantOf(element);
        if (value.isValid())
            content.values.insert(name, value);
        else
            content.foreign.insert(name, QByteArray::fromStdString(simdjson::minify(element)));
    }
    return content;
}

QByteArray SettingsFile::encode(const Content& content) {
    JsonWriter writer(JsonWriter::Style::Indented);
    writer.beginObject();
    for (auto entry = content.values.begin(); entry != content.values.end(); ++entry) {
        writer.key(entry.key());
        vorq::write(writer, *entry);
    }
    for (auto entry = content.foreign.begin(); entry != content.foreign.end(); ++entry) {
        writer.key(entry.key());
        writer.raw(*entry);
    }
    writer.endObject();
    return writer.take() + '\n';
}

SettingsFile::SettingsFile(QString path) : m_path(std::move(path)) {
    reload();
}

QVariant SettingsFile::value(const QString& key) const {
    if (const auto found = m_content.foreign.constFind(key); found != m_content.foreign.constEnd())
        return QJsonDocument::fromJson('[' + *found + ']').array().first().toVariant();
    return m_content.values.value(key);
}

// What was read before is not given up for a file that cannot be read.
void SettingsFile::reload() {
    m_damaged = false;
    m_unreadable = false;
    QFile file(m_path);
    if (!file.exists()) {
        m_content = {};
        return;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        m_unreadable = true;
        return warnOnce(u"Vorq cannot read its settings %1 (%2) and %3."_s.arg(
            m_path, file.errorString(), m_hasRead ? goesOn : u"starts with defaults"_s));
    }
    const QByteArray bytes = file.readAll();
    std::optional<Content> content = decode(bytes);
    m_damaged = !content;
    if (m_damaged) return handleDamage(bytes);
    m_content = *std::move(content);
    m_hasRead = true;
}

void SettingsFile::handleDamage(const QByteArray& bytes) {
    const Content readable = decode(readablePart(bytes)).value_or(Content());
    for (auto entry = readable.values.begin(); entry != readable.values.end(); ++entry) {
        m_content.foreign.remove(entry.key());
        m_content.values.insert(entry.key(), *entry);
    }
    m_content.foreign.insert(readable.foreign);
    if (std::exchange(m_hasSeenDamage, true)) return;
    m_damage = u"Vorq found its settings %1 damaged and %2; the damaged file is kept."_s.arg(
        m_path, m_hasRead ? goesOn : u"starts with what can be read of them"_s);
    warnOnce(m_damage);
    tellOfDamage();
}

void SettingsFile::tellOfDamage() {
    if (m_damageHandler && !m_damage.isEmpty()) m_damageHandler(std::exchange(m_damage, {}));
}

void SettingsFile::setDamageHandler(const std::function<void(const QString& sentence)>& handler) {
    m_damageHandler = handler;
    tellOfDamage();
}

bool SettingsFile::mayHaveLost(const QString& key) const {
    if (contains(key)) return false;
    if (!m_hasRead && m_unreadable) return true;
    const std::optional<QString> kept = string(damagedFileKey);
    if (!kept && (m_hasRead || !m_damaged)) return false;
    const QString damaged = kept ? QFileInfo(m_path).absoluteDir().filePath(*kept) : m_path;
    return mayHaveHeld(bytesOf(damaged), key.toUtf8());
}

void SettingsFile::change(const std::vector<Change>& changes) {
    for (const auto& [key, value] : changes) {
        m_content.foreign.remove(key);
        if (value.isValid())
            m_content.values.insert(key, value);
        else
            m_content.values.remove(key);
    }
}

void SettingsFile::apply(const std::vector<Change>& changes) {
    applyWhere([] { return true; }, changes);
}

bool SettingsFile::applyIf(const QString& key, const QString& text,
                           const std::vector<Change>& changes) {
    return applyWhere([&] { return string(key).value_or(QString()) == text; }, changes);
}

bool SettingsFile::applyWhere(const std::function<bool()>& holds,
                              const std::vector<Change>& changes) {
    const QString folder = QFileInfo(m_path).absolutePath();
    QDir().mkpath(folder);
    // Without the lock, as on a read-only disk, the write is tried all the same and fails by
    // itself.
    QLockFile lock(m_path + u".lock"_s);
    lockForWriting(lock, folder);
    reload();
    change(m_unwritten);
    if (!holds()) return false;
    change(changes);
    m_unwritten.insert(m_unwritten.end(), changes.begin(), changes.end());
    if (write()) m_unwritten.clear();
    return true;
}

std::optional<QString> SettingsFile::whyFixed(const QString& key) {
    apply({});
    const auto isInMemoryAlone = std::ranges::any_of(
        m_unwritten, [&key](const Change& change) { return change.first == key; });
    if (m_failure.isEmpty() || isInMemoryAlone) return std::nullopt;
    return m_failure;
}

void SettingsFile::synchronise() {
    reload();
    change(m_unwritten);
}

std::expected<void, QString> SettingsFile::erase() {
    m_content = {};
    m_unwritten.clear();
    const QFileInfo file(m_path);
    QDir folder = file.absoluteDir();
    if (!folder.exists()) return {};
    const QString name = file.fileName();
    if (file.isSymLink()) QFile(m_path).resize(0);
    removeLeftovers(m_path, 0s);
    QLockFile lock(m_path + u".lock"_s);
    lockForWriting(lock, folder.absolutePath());
    QStringList all = {name};
    all += folder.entryList({name + u".damaged-*"_s}, QDir::Files);
    QStringList failures;
    for (const QString& each : all)
        if (const auto outcome = removeForGood(folder.filePath(each)); !outcome)
            failures += folder.filePath(each) + u": "_s + outcome.error();
    lock.unlock();
    folder.rmdir(folder.absolutePath());
    if (failures.isEmpty()) return {};
    return std::unexpected(failures.join(u'\n'));
}

bool SettingsFile::write() {
    if (m_unreadable) return fail(u"the file cannot be read"_s);
    if (m_damaged) {
        const std::optional<QString> kept = keepDamagedFile();
        if (!kept) return fail(u"the damaged file cannot be kept"_s);
        if (!m_hasRead) m_content.values.insert(damagedFileKey, QFileInfo(*kept).fileName());
    }
    removeLeftovers(m_path);
    // Private, since it may hold a secret. What is written last before the power fails is not
    // worth that each write waits for the folder, too.
    const FileOutcome written =
        replaceFile(m_path, encode(m_content), {.mindsProtection = true, .flushesFolder = false});
    if (written) {
        m_damaged = false;
        m_hasRead = true;
        m_failure.clear();
        return true;
    }
    warnOnce(u"Vorq cannot write its settings %1 (%2); changes last until it ends."_s.arg(
        m_path, written.error()));
    return fail(written.error());
}

bool SettingsFile::fail(const QString& reason) {
    m_failure = reason;
    return false;
}

std::optional<QString> SettingsFile::keepDamagedFile() const {
    for (int number = 1; number < 1000; ++number) {
        QString kept = u"%1.damaged-%2"_s.arg(m_path).arg(number);
        if (QFile::exists(kept) ? bytesOf(kept) == bytesOf(m_path) : QFile::copy(m_path, kept))
            return kept;
    }
    return std::nullopt;
}

void SettingsFile::warnOnce(const QString& text) {
    if (m_warned) return;
    m_warned = true;
    std::fprintf(stderr, "%s\n", qPrintable(text));
}

} // namespace vorq
