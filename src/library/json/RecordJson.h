#pragma once

#include "library/json/RecordHook.h"
#include "library/json/RecordReader.h"
#include "support/RawNames.h"
#include "support/json/JsonWriter.h"

#include <array>
#include <concepts>
#include <cstddef>
#include <optional>
#include <type_traits>
#include <vector>

namespace vorq {

// What the records of the library share in reading and writing. For source files only.

/// Specialised for each enumeration: its RawNames.
template<typename Enumeration>
inline constexpr std::nullptr_t rawStrings = nullptr;

template<typename Enumeration>
concept HasRawStrings = !std::same_as<decltype(rawStrings<Enumeration>), const std::nullptr_t>;

/// Specialised for each kind of record: its fields in ascending order of their keys, which is that
/// of the file.
template<typename Record>
inline constexpr std::nullptr_t fieldsOf = nullptr;

template<typename Record>
concept HasFields = !std::same_as<decltype(fieldsOf<Record>), const std::nullptr_t>;

/// Overloaded for records whose defaults are not those of their type.
inline void setDefaults(auto& /*record*/, Date /*now*/) {}

// Reading

/// Fails on a string that no case has.
template<HasRawStrings Enumeration>
[[nodiscard]] bool read(RecordReader& reader, JsonValue& value, Enumeration& held) {
    const std::optional<QByteArray> text = reader.readLatin1(value);
    if (!text) return false;
    const std::optional<Enumeration> found = rawStrings<Enumeration>.caseOf(QByteArrayView(*text));
    if (found) held = *found;
    return found.has_value();
}

template<HasFields Record>
[[nodiscard]] bool read(RecordReader& reader, JsonValue& value, Record& record) {
    setDefaults(record, reader.now());
    return reader.readObject(value, fieldsOf<Record>, &record);
}

template<typename Value>
[[nodiscard]] bool read(RecordReader& reader, JsonValue& value, Value& held)
    requires requires { reader.read(value, held); }
{
    return reader.read(value, held);
}

template<typename Value>
[[nodiscard]] bool read(RecordReader& reader, JsonValue& value, std::optional<Value>& held) {
    return read(reader, value, held.emplace());
}

template<typename Entry>
[[nodiscard]] bool readEntry(RecordReader& reader, JsonValue& value, void* list) {
    return read(reader, value, static_cast<std::vector<Entry>*>(list)->emplace_back());
}

template<typename Entry>
[[nodiscard]] bool read(RecordReader& reader, JsonValue& value, std::vector<Entry>& list) {
    return reader.readArray(value, readEntry<Entry>, &list);
}

template<typename Record>
struct HookedList {
    const RecordHook<Record>& hook;
    std::vector<Record> records = {};
};

template<typename Record>
[[nodiscard]] bool readHooked(RecordReader& reader, JsonValue& value, void* list) {
    auto& [hook, records] = *static_cast<HookedList<Record>*>(list);
    if (!read(reader, value, records.emplace_back())) return false;
    if (hook) hook(records.back());
    return true;
}

/// A whole file of the library. Nothing if any of it does not fit.
template<HasFields Record>
[[nodiscard]] std::optional<std::vector<Record>> decodedFile(JsonFile& file, Date now = {},
                                                             const RecordHook<Record>& hook = {}) {
    HookedList<Record> list{hook};
    const auto clear = [](void* held) { static_cast<HookedList<Record>*>(held)->records.clear(); };
    if (!RecordReader(now).readFile(file, readHooked<Record>, clear, &list)) return std::nullopt;
    return std::move(list.records);
}

// Writing

inline void write(JsonWriter& writer, const QString& text) {
    writer.value(QStringView(text));
}

inline void write(JsonWriter& writer, std::same_as<bool> auto truth) {
    writer.value(truth);
}

inline void write(JsonWriter& writer, qint64 number) {
    writer.value(number);
}

inline void write(JsonWriter& writer, double number) {
    writer.value(number);
}

void write(JsonWriter& writer, const QUuid& id);

inline void write(JsonWriter& writer, Date date) {
    writer.plainString(isoDate(date));
}

inline void write(JsonWriter& writer, const QByteArray& bytes) {
    writer.value(QStringView(QString::fromLatin1(bytes.toBase64())));
}

template<HasRawStrings Enumeration>
void write(JsonWriter& writer, Enumeration value) {
    writer.plainString(rawStrings<Enumeration>.latin1(value));
}

void writeObject(JsonWriter& writer, std::span<const Field> fields, const void* record);

template<HasFields Record>
void write(JsonWriter& writer, const Record& record) {
    writeObject(writer, fieldsOf<Record>, &record);
}

template<typename Entry>
void write(JsonWriter& writer, const std::vector<Entry>& list) {
    writer.beginArray();
    for (const Entry& entry : list)
        write(writer, entry);
    writer.endArray();
}

template<typename Value>
void writeMember(JsonWriter& writer, std::string_view key, const Value& value) {
    writer.plainKey(key);
    write(writer, value);
}

template<typename Value>
void writeMember(JsonWriter& writer, std::string_view key, const std::optional<Value>& value) {
    if (value) writeMember(writer, key, *value);
}

template<HasFields Record>
[[nodiscard]] QByteArray encodedFile(const std::vector<Record>& records) {
    JsonWriter writer(JsonWriter::Style::Indented);
    write(writer, records);
    return writer.take();
}

template<HasFields Record>
void encodeFile(const std::vector<Record>& records, const JsonWriter::Sink& put) {
    JsonWriter writer(JsonWriter::Style::Indented, put);
    write(writer, records);
    writer.take();
}

// Fields

template<auto pointer>
struct MemberPointer;

template<typename Owner, typename Held, Held Owner::* pointer>
struct MemberPointer<pointer> {
    using Record = Owner;
};

template<auto pointer>
bool readMember(RecordReader& reader, JsonValue& value, void* record) {
    return read(reader, value,
                static_cast<typename MemberPointer<pointer>::Record*>(record)->*pointer);
}

template<auto pointer>
void writeMemberOf(JsonWriter& writer, std::string_view key, const void* record) {
    writeMember(writer, key,
                static_cast<const typename MemberPointer<pointer>::Record*>(record)->*pointer);
}

/// A field that no record may lack.
template<auto pointer>
consteval Field required(std::string_view key) {
    return {key, true, readMember<pointer>, writeMemberOf<pointer>};
}

/// A field that keeps its default where a record lacks it.
template<auto pointer>
consteval Field defaulted(std::string_view key) {
    return {key, false, readMember<pointer>, writeMemberOf<pointer>};
}

/// A field of older versions, which is not written any more.
template<auto pointer>
consteval Field former(std::string_view key) {
    return {key, false, readMember<pointer>, nullptr};
}

} // namespace vorq
