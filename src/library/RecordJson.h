#pragma once

#include "support/JsonWriter.h"
#include "support/StrictJson.h"

#include <algorithm>
#include <array>
#include <concepts>
#include <optional>
#include <span>
#include <vector>

namespace vorq {

// What the records of the library share in reading and writing. For source files only.

/// Specialised for each enumeration: the raw strings of its cases, in their order.
template<typename Enumeration>
inline constexpr std::nullptr_t rawStrings = nullptr;

template<typename Enumeration>
concept HasRawStrings = !std::same_as<decltype(rawStrings<Enumeration>), const std::nullptr_t>;

template<HasRawStrings Enumeration>
[[nodiscard]] QStringView rawStringOf(Enumeration value) {
    return rawStrings<Enumeration>[static_cast<std::size_t>(value)];
}

/// Fails on a string that no case has.
template<HasRawStrings Enumeration>
[[nodiscard]] bool read(strict_json::Element element, Enumeration& value) {
    QString text;
    if (!strict_json::read(element, text)) return false;
    const auto& strings = rawStrings<Enumeration>;
    const auto found = std::find(strings.begin(), strings.end(), QStringView(text));
    if (found == strings.end()) return false;
    value = static_cast<Enumeration>(found - strings.begin());
    return true;
}

inline void value(JsonWriter& writer, const QUuid& id) {
    writer.raw('"' + id.toByteArray(QUuid::WithoutBraces).toUpper() + '"');
}

inline void member(JsonWriter& writer, QStringView key, const QUuid& id) {
    writer.key(key);
    value(writer, id);
}

inline void member(JsonWriter& writer, QStringView key, Date date) {
    writer.key(key);
    writer.raw('"' + isoDate(date) + '"');
}

inline void member(JsonWriter& writer, QStringView key, const QByteArray& bytes) {
    writer.key(key);
    writer.value(QString::fromLatin1(bytes.toBase64()));
}

template<HasRawStrings Enumeration>
void member(JsonWriter& writer, QStringView key, Enumeration value) {
    writer.member(key, rawStringOf(value));
}

template<typename Value>
void memberIfPresent(JsonWriter& writer, QStringView key, const std::optional<Value>& value) {
    if (value) member(writer, key, *value);
}

/// An array whose entries are written by `write`.
template<typename Record, typename Write>
void list(JsonWriter& writer, const std::vector<Record>& records, Write write) {
    writer.beginArray();
    for (const Record& record : records)
        write(record);
    writer.endArray();
}

/// An array whose entries are read by `readEntry`. For records that ask for more than themselves.
template<typename Record, typename Read>
[[nodiscard]] bool readEach(strict_json::Element element, std::vector<Record>& records,
                            Read readEntry) {
    simdjson::dom::array array;
    if (element.get(array) != simdjson::SUCCESS) return false;
    for (const strict_json::Element entry : array) {
        if (!readEntry(entry, records.emplace_back())) return false;
    }
    return true;
}

/// A whole file of the library. Nothing if any of it does not fit.
template<typename Record, typename Read>
[[nodiscard]] std::optional<std::vector<Record>> decodedFile(QByteArrayView json, Read readEntry) {
    if (json.isEmpty()) return std::nullopt;
    simdjson::dom::parser parser;
    strict_json::Element root;
    std::vector<Record> records;
    if (parser.parse(json.data(), static_cast<std::size_t>(json.size())).get(root) !=
            simdjson::SUCCESS ||
        !readEach(root, records, readEntry))
        return std::nullopt;
    return records;
}

template<typename Record, typename Write>
[[nodiscard]] QByteArray encodedFile(const std::vector<Record>& records, Write write) {
    JsonWriter writer(JsonWriter::Style::Indented);
    list(writer, records, [&](const Record& record) { write(writer, record); });
    return writer.take();
}

} // namespace vorq
