#include "platform/linux/SettingsFile.h"

#include "support/JsonWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>

#include <chrono>
#include <cstdio>
#include <optional>
#include <simdjson.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr QFileDevice::Permissions privateFile = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

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
    default:
        return {};
    }
}

// Nothing for a document that is no object of plain values.
std::optional<QMap<QString, QVariant>> decode(const QByteArray& bytes) {
    simdjson::dom::parser parser;
    simdjson::dom::object object;
    if (parser.parse(bytes.constData(), static_cast<std::size_t>(bytes.size())).get(object) !=
        simdjson::SUCCESS)
        return std::nullopt;
    QMap<QString, QVariant> values;
    for (const auto& [key, element] : object) {
        const QVariant value = variantOf(element);
        if (!value.isValid()) return std::nullopt;
        values.insert(QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())), value);
    }
    return values;
}

QByteArray encode(const QMap<QString, QVariant>& values) {
    JsonWriter writer(JsonWriter::Style::Indented);
    writer.beginObject();
    for (auto entry = values.begin(); entry != values.end(); ++entry) {
        writer.key(entry.key());
        switch (entry->typeId()) {
        case QMetaType::Bool:
            writer.value(entry->toBool());
            break;
        case QMetaType::Int:
        case QMetaType::LongLong:
            writer.value(entry->toLongLong());
            break;
        case QMetaType::Double:
            writer.value(entry->toDouble());
            break;
        default:
            writer.value(entry->toString());
        }
    }
    writer.endObject();
    return writer.take() + '\n';
}

} // namespace

SettingsFile::SettingsFile(QString path) : m_path(std::move(path)) {
    reload();
}

QVariant SettingsFile::value(const QString& key) const {
    return m_values.value(key);
}

void SettingsFile::reload() {
    m_values.clear();
    m_damaged = false;
    m_unreadable = false;
    QFile file(m_path);
    if (!file.exists()) return;
    if (!file.open(QIODevice::ReadOnly)) {
        m_unreadable = true;
        warnOnce(QStringLiteral("Vorq cannot read its settings %1 (%2) and starts with defaults.")
                     .arg(m_path, file.errorString()));
        return;
    }
    if (std::optional<Values> values = decode(file.readAll())) {
        m_values = *std::move(values);
    } else {
        m_damaged = true;
        warnOnce(QStringLiteral("Vorq found its settings %1 damaged and starts with defaults; the "
                                "damaged file is kept.")
                     .arg(m_path));
    }
}

void SettingsFile::change(const std::vector<Change>& changes) {
    for (const auto& [key, value] : changes) {
        if (value.isValid())
            m_values.insert(key, value);
        else
            m_values.remove(key);
    }
}

void SettingsFile::apply(const std::vector<Change>& changes) {
    m_unwritten.insert(m_unwritten.end(), changes.begin(), changes.end());
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    // Without the lock, as on a read-only disk, the write is tried all the same and fails by
    // itself.
    QLockFile lock(m_path + QStringLiteral(".lock"));
    lock.setStaleLockTime(5s);
    lock.tryLock(2s);
    reload();
    change(m_unwritten);
    if (write()) m_unwritten.clear();
}

void SettingsFile::synchronise() {
    reload();
    change(m_unwritten);
}

bool SettingsFile::write() {
    if (m_unreadable || (m_damaged && !keepDamagedFile())) return false;
    QSaveFile file(m_path);
    // The permissions are set before the first byte, which may be a secret.
    const QByteArray bytes = encode(m_values);
    if (file.open(QIODevice::WriteOnly) && file.setPermissions(privateFile) &&
        file.write(bytes) == bytes.size() && file.commit()) {
        m_damaged = false;
        return true;
    }
    warnOnce(QStringLiteral("Vorq cannot write its settings %1 (%2); changes last until it ends.")
                 .arg(m_path, file.errorString()));
    return false;
}

bool SettingsFile::keepDamagedFile() {
    for (int number = 1; number < 1000; ++number) {
        const QString kept = QStringLiteral("%1.damaged-%2").arg(m_path).arg(number);
        if (!QFile::exists(kept)) return QFile::copy(m_path, kept);
    }
    return false;
}

void SettingsFile::warnOnce(const QString& text) {
    if (m_warned) return;
    m_warned = true;
    std::fprintf(stderr, "%s\n", qPrintable(text));
}

} // namespace vorq
