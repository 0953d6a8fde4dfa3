#pragma once

#include "library/json/JsonFile.h"
#include "support/Date.h"

#include <QByteArray>
#include <QString>
#include <QUuid>

#include <optional>
#include <span>
#include <string_view>

namespace vorq {

class JsonValue;
class JsonWriter;
class RecordReader;

/// A member of the records of one kind, for reading and writing.
struct Field {
    std::string_view key;
    bool isRequired = false;
    bool (*read)(RecordReader& reader, JsonValue& value, void* record) = nullptr;
    /// Nothing for what is only read.
    void (*write)(JsonWriter& writer, std::string_view key, const void* record) = nullptr;
};

/// Reads the files of the library in one pass straight into their records.
///
/// Strict: a value of another type than the field's, a required field that is missing, and JSON
/// that is not in order anywhere fail the whole file. Lenient: null counts as absent, unknown keys
/// are passed over, and of equal keys the last counts. Functions give false for what does not fit.
class RecordReader {
  public:
    /// `now` is for records that have no date.
    explicit RecordReader(Date now) : m_now(now) {}

    [[nodiscard]] Date now() const { return m_now; }

    /// Reads a value into a new entry of the list.
    using ReadEntry = bool (*)(RecordReader& reader, JsonValue& value, void* list);

    /// A whole file, which is one array. `clear` empties the list for another try.
    [[nodiscard]] bool readFile(JsonFile& file, ReadEntry readEntry, void (*clear)(void* list),
                                void* list);
    [[nodiscard]] bool readArray(JsonValue& value, ReadEntry readEntry, void* list);
    [[nodiscard]] bool readObject(JsonValue& value, std::span<const Field> fields, void* record);

    [[nodiscard]] bool read(JsonValue& value, QString& text);
    [[nodiscard]] bool read(JsonValue& value, bool& truth);
    /// Whole numbers, also in the form "2.0".
    [[nodiscard]] bool read(JsonValue& value, qint64& number);
    [[nodiscard]] bool read(JsonValue& value, double& number);
    /// The 36 characters of the canonical form, in either case.
    [[nodiscard]] bool read(JsonValue& value, QUuid& id);
    [[nodiscard]] bool read(JsonValue& value, Date& date);
    /// Base64 of the bytes.
    [[nodiscard]] bool read(JsonValue& value, QByteArray& bytes);

    /// A string of few forms, which are all ASCII; valid as long as the file. "?" stands for what
    /// is not Latin-1.
    [[nodiscard]] std::optional<QByteArray> readLatin1(JsonValue& value);

  private:
    [[nodiscard]] bool readPieces(JsonFile& file, ReadEntry readEntry, void* list);
    [[nodiscard]] bool readWhole(JsonFile& file, ReadEntry readEntry, void* list);

    Date m_now;
    bool m_expectsEqualKeys = false;
};

} // namespace vorq
