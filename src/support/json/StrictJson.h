#pragma once

#include "support/Date.h"

#include <QByteArrayView>
#include <QString>
#include <QUuid>

#include <optional>
#include <simdjson.h>
#include <string_view>
#include <vector>

namespace vorq::strict_json {

/// Reading of JSON into typed fields: a value of another type than the field's fails the whole
/// record, null counts as absent, unknown keys are passed over, and of equal keys the last counts.
/// Functions give false for what does not fit.

using Element = simdjson::dom::element;
using Object = simdjson::dom::object;

[[nodiscard]] bool read(Element element, QString& text);
[[nodiscard]] bool read(Element element, bool& truth);
/// Whole numbers, also in the form "2.0".
[[nodiscard]] bool read(Element element, qint64& number);
[[nodiscard]] bool read(Element element, double& number);
/// The 36 characters of the canonical form, in either case.
[[nodiscard]] bool read(Element element, QUuid& id);
[[nodiscard]] bool read(Element element, Date& date);
/// Base64 of the bytes.
[[nodiscard]] bool read(Element element, QByteArray& bytes);

template<typename Value>
[[nodiscard]] bool read(Element element, std::vector<Value>& values) {
    simdjson::dom::array array;
    if (element.get(array) != simdjson::SUCCESS) return false;
    values.clear();
    for (const Element entry : array) {
        if (!read(entry, values.emplace_back())) return false;
    }
    return true;
}

/// The value under the key, unless it is missing or null.
[[nodiscard]] std::optional<Element> find(Object object, std::string_view key);

template<typename Value>
[[nodiscard]] bool readRequired(Object object, std::string_view key, Value& value) {
    const std::optional<Element> element = find(object, key);
    return element && read(*element, value);
}

/// Leaves the value alone if the key is absent.
template<typename Value>
[[nodiscard]] bool readIfPresent(Object object, std::string_view key, Value& value) {
    const std::optional<Element> element = find(object, key);
    return !element || read(*element, value);
}

template<typename Value>
[[nodiscard]] bool readIfPresent(Object object, std::string_view key, std::optional<Value>& value) {
    const std::optional<Element> element = find(object, key);
    return !element || read(*element, value.emplace());
}

/// A whole document as a record, for which a read(Element, Record&) is found by its arguments.
template<typename Record>
[[nodiscard]] std::optional<Record> decodeDocument(QByteArrayView json) {
    if (json.isEmpty()) return std::nullopt; // simdjson would copy from a null pointer
    simdjson::dom::parser parser;
    Element root;
    if (parser.parse(json.data(), static_cast<std::size_t>(json.size())).get(root) !=
        simdjson::SUCCESS)
        return std::nullopt;
    Record record;
    if (!read(root, record)) return std::nullopt;
    return record;
}

} // namespace vorq::strict_json
