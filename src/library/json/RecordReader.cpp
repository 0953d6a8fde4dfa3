#include "library/json/RecordReader.h"

#include "support/json/JsonText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <new>
#include <simdjson.h>

namespace vorq {

namespace ondemand = simdjson::ondemand;
using simdjson::SUCCESS;

class JsonValue {
  public:
    ondemand::value value;
};

namespace {

constexpr std::size_t mostFields = 16;
constexpr int deepest = 1000; // simdjson's own limit is a little above

std::string_view bodyOf(std::string_view token) {
    const std::size_t last = token.find_last_not_of(" \t\n\r");
    if (last == std::string_view::npos || last == 0 || token[last] != '"') return {};
    return token.substr(1, last - 1);
}

// The string's body as it stands in the file.
std::optional<std::string_view> rawString(ondemand::value& value) {
    const std::string_view token = value.raw_json_token();
    ondemand::raw_json_string start;
    if (value.get_raw_json_string().get(start) != SUCCESS) return std::nullopt;
    return bodyOf(token);
}

std::string_view bodyOfKey(ondemand::raw_json_string key) {
    const char* end = key.raw();
    while (*end != '"')
        end += *end == '\\' ? 2 : 1;
    return {key.raw(), static_cast<std::size_t>(end - key.raw())};
}

bool isValid(ondemand::value& value, int depth);

bool isValidKey(ondemand::raw_json_string key) {
    QString name;
    return unescapeJson(bodyOfKey(key), name);
}

bool isValidArray(ondemand::value& value, int depth) {
    ondemand::array array;
    if (value.get_array().get(array) != SUCCESS) return false;
    for (auto next : array) {
        ondemand::value entry;
        if (next.get(entry) != SUCCESS || !isValid(entry, depth)) return false;
    }
    return true;
}

bool isValidObject(ondemand::value& value, int depth) {
    ondemand::object object;
    if (value.get_object().get(object) != SUCCESS) return false;
    for (auto next : object) {
        ondemand::field field;
        if (std::move(next).get(field) != SUCCESS || !isValidKey(field.key()) ||
            !isValid(field.value(), depth))
            return false;
    }
    return true;
}

// Reads over a value; simdjson itself would pass over what is wrong in it.
bool isValid(ondemand::value& value, int depth) {
    ondemand::json_type type{};
    if (depth > deepest || value.type().get(type) != SUCCESS) return false;
    switch (type) {
    case ondemand::json_type::array:
        return isValidArray(value, depth + 1);
    case ondemand::json_type::object:
        return isValidObject(value, depth + 1);
    case ondemand::json_type::number:
        return value.get_double().error() == SUCCESS;
    case ondemand::json_type::boolean:
        return value.get_bool().error() == SUCCESS;
    case ondemand::json_type::null:
        return value.is_null().error() == SUCCESS;
    case ondemand::json_type::string: {
        const std::optional<std::string_view> body = rawString(value);
        QString text;
        return body && unescapeJson(*body, text);
    }
    }
    return false;
}

// The keys of an object's members. Files have them in the fields' order, so that each is looked for
// behind the former.
class KeyFinder {
  public:
    explicit KeyFinder(std::span<const Field> fields) : m_fields(fields) {}

    // The number of fields for a key that none has; nothing for one that is not in order.
    std::optional<std::size_t> find(ondemand::raw_json_string key) {
        for (std::size_t tried = 0; tried < m_fields.size(); ++tried) {
            const std::size_t index = m_next < m_fields.size() ? m_next : 0;
            m_next = index + 1;
            if (stands(m_fields[index].key, key.raw())) return index;
        }
        const std::string_view body = bodyOfKey(key);
        if (body.find('\\') == std::string_view::npos) return m_fields.size();
        QString name;
        if (!unescapeJson(body, name)) return std::nullopt;
        const auto found = std::ranges::find_if(
            m_fields, [&name](const Field& field) { return name == QLatin1StringView(field.key); });
        return static_cast<std::size_t>(found - m_fields.begin());
    }

  private:
    // No key is longer than what simdjson wants to be readable behind the document.
    static bool stands(std::string_view key, const char* raw) {
        return raw[key.size()] == '"' && std::memcmp(raw, key.data(), key.size()) == 0;
    }

    std::span<const Field> m_fields;
    std::size_t m_next = 0;
};

// How often each field's key is still to come.
using Counts = std::array<std::uint32_t, mostFields + 1>;

bool countKeys(ondemand::object& object, std::span<const Field> fields, Counts& counts) {
    counts.fill(0);
    KeyFinder keys(fields);
    for (auto next : object) {
        ondemand::field field;
        if (std::move(next).get(field) != SUCCESS) return false;
        const std::optional<std::size_t> index = keys.find(field.key());
        if (!index) return false;
        ++counts[*index];
    }
    return object.reset().error() == SUCCESS;
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::optional<QUuid> uuidFrom(QByteArrayView text) {
    constexpr QByteArrayView form = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    if (text.size() != form.size()) return std::nullopt;
    std::array<char, 16> bytes{};
    std::size_t digits = 0;
    for (qsizetype at = 0; at < form.size(); ++at) {
        if (form[at] == '-') {
            if (text[at] != '-') return std::nullopt;
            continue;
        }
        const int digit = hexDigit(text[at]);
        if (digit < 0) return std::nullopt;
        bytes[digits / 2] = static_cast<char>((bytes[digits / 2] << 4) | digit);
        ++digits;
    }
    return QUuid::fromRfc4122(QByteArrayView(bytes.data(), bytes.size()));
}

struct Entries {
    RecordReader& reader;
    RecordReader::ReadEntry read;
    void* list;
};

// A document that is an array.
bool readPiece(ondemand::parser& parser, std::string_view text, std::size_t capacity,
               const Entries& entries) {
    ondemand::document document;
    ondemand::array array;
    if (text.empty() || parser.iterate(text, capacity).get(document) != SUCCESS ||
        document.get_array().get(array) != SUCCESS)
        return false;
    for (auto next : array) {
        JsonValue value;
        if (next.get(value.value) != SUCCESS || !entries.read(entries.reader, value, entries.list))
            return false;
    }
    return document.current_location().error() == simdjson::OUT_OF_BOUNDS;
}

} // namespace

bool RecordReader::readFile(JsonFile& file, ReadEntry readEntry, void (*clear)(void*), void* list) {
    try {
        m_expectsEqualKeys = false;
        if (readPieces(file, readEntry, list)) return true;
        clear(list);
        m_expectsEqualKeys = true;
        if (readWhole(file, readEntry, list)) return true;
    } catch (const std::bad_alloc&) {
    }
    clear(list);
    return false;
}

bool RecordReader::readPieces(JsonFile& file, ReadEntry readEntry, void* list) {
    ondemand::parser parser;
    do {
        const std::optional<std::string_view> piece = file.nextPiece();
        if (!piece || !readPiece(parser, *piece, file.capacity(), {*this, readEntry, list}))
            return false;
    } while (!file.isAtEnd());
    return true;
}

bool RecordReader::readWhole(JsonFile& file, ReadEntry readEntry, void* list) {
    ondemand::parser parser;
    const std::optional<std::string_view> text = file.whole();
    return text && readPiece(parser, *text, file.capacity(), {*this, readEntry, list});
}

bool RecordReader::readArray(JsonValue& value, ReadEntry readEntry, void* list) {
    ondemand::array array;
    if (value.value.get_array().get(array) != SUCCESS) return false;
    for (auto next : array) {
        JsonValue entry;
        if (next.get(entry.value) != SUCCESS || !readEntry(*this, entry, list)) return false;
    }
    return true;
}

// Whatever comes twice is read by another reading of the whole file, which first counts.
bool RecordReader::readObject(JsonValue& value, std::span<const Field> fields, void* record) {
    Q_ASSERT(fields.size() <= mostFields);
    ondemand::object object;
    if (value.value.get_object().get(object) != SUCCESS) return false;
    Counts counts;
    counts.fill(1);
    if (m_expectsEqualKeys && !countKeys(object, fields, counts)) return false;
    std::uint32_t present = 0;
    KeyFinder keys(fields);
    for (auto next : object) {
        ondemand::field field;
        if (std::move(next).get(field) != SUCCESS) return false;
        const std::optional<std::size_t> index = keys.find(field.key());
        if (!index) return false;
        JsonValue held{field.value()};
        const bool isKnown = *index < fields.size();
        if (isKnown && counts[*index] == 0) return false;
        if (!isKnown || --counts[*index] > 0) {
            if (!isValid(held.value, 0)) return false;
            continue;
        }
        bool isNull = false;
        if (held.value.is_null().get(isNull) != SUCCESS) return false;
        if (isNull) continue;
        if (!fields[*index].read(*this, held, record)) return false;
        present |= 1U << *index;
    }
    for (std::size_t index = 0; index < fields.size(); ++index) {
        if (fields[index].isRequired && (present >> index & 1U) == 0) return false;
    }
    return true;
}

bool RecordReader::read(JsonValue& value, QString& text) {
    const std::optional<std::string_view> body = rawString(value.value);
    return body && unescapeJson(*body, text);
}

bool RecordReader::read(JsonValue& value, bool& truth) {
    return value.value.get_bool().get(truth) == SUCCESS;
}

bool RecordReader::read(JsonValue& value, qint64& number) {
    std::int64_t whole = 0;
    if (value.value.get_int64().get(whole) == SUCCESS) {
        number = whole;
        return true;
    }
    constexpr double limit = 9'007'199'254'740'992.0; // beyond it a double skips whole numbers
    double real = 0;
    if (value.value.get_double().get(real) != SUCCESS) return false;
    if (std::trunc(real) != real || std::abs(real) > limit) return false;
    number = static_cast<qint64>(real);
    return true;
}

bool RecordReader::read(JsonValue& value, double& number) {
    return value.value.get_double().get(number) == SUCCESS;
}

std::optional<QByteArray> RecordReader::readLatin1(JsonValue& value) {
    const std::optional<std::string_view> body = rawString(value.value);
    if (!body) return std::nullopt;
    if (body->find('\\') == std::string_view::npos)
        return QByteArray::fromRawData(body->data(), static_cast<qsizetype>(body->size()));
    QString text;
    if (!unescapeJson(*body, text)) return std::nullopt;
    return text.toLatin1();
}

bool RecordReader::read(JsonValue& value, QUuid& id) {
    const std::optional<QByteArray> text = readLatin1(value);
    const std::optional<QUuid> found = text ? uuidFrom(*text) : std::nullopt;
    if (found) id = *found;
    return found.has_value();
}

bool RecordReader::read(JsonValue& value, Date& date) {
    const std::optional<QByteArray> text = readLatin1(value);
    const std::optional<Date> found = text ? dateFromIso(*text) : std::nullopt;
    if (found) date = *found;
    return found.has_value();
}

bool RecordReader::read(JsonValue& value, QByteArray& bytes) {
    const std::optional<QByteArray> text = readLatin1(value);
    if (!text || text->size() % 4 != 0) return false;
    auto decoded = QByteArray::fromBase64Encoding(*text, QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded) return false;
    bytes = std::move(decoded.decoded);
    return true;
}

} // namespace vorq
