#include "support/json/StrictJson.h"

#include <cmath>

namespace vorq::strict_json {

bool read(Element element, QString& text) {
    std::string_view utf8;
    if (element.get(utf8) != simdjson::SUCCESS) return false;
    text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    // Taken for a mark of the encoding, it was dropped.
    if (utf8.starts_with("\xEF\xBB\xBF")) text.prepend(QChar(QChar::ByteOrderMark));
    return true;
}

bool read(Element element, bool& truth) {
    return element.get(truth) == simdjson::SUCCESS;
}

bool read(Element element, qint64& number) {
    std::int64_t whole = 0;
    if (element.get(whole) == simdjson::SUCCESS) {
        number = whole;
        return true;
    }
    constexpr double limit = 9'007'199'254'740'992.0; // beyond it a double skips whole numbers
    double real = 0;
    if (!element.is_double() || element.get(real) != simdjson::SUCCESS) return false;
    if (std::trunc(real) != real || std::abs(real) > limit) return false;
    number = static_cast<qint64>(real);
    return true;
}

bool read(Element element, double& number) {
    return element.get(number) == simdjson::SUCCESS;
}

bool read(Element element, QUuid& id) {
    std::string_view text;
    if (element.get(text) != simdjson::SUCCESS || text.size() != 36) return false;
    id = QUuid::fromString(QLatin1StringView(text));
    return !id.isNull() || text == "00000000-0000-0000-0000-000000000000";
}

bool read(Element element, Date& date) {
    std::string_view text;
    if (element.get(text) != simdjson::SUCCESS) return false;
    const std::optional<Date> found = dateFromIso(QByteArrayView(text));
    if (found) date = *found;
    return found.has_value();
}

bool read(Element element, QByteArray& bytes) {
    std::string_view text;
    if (element.get(text) != simdjson::SUCCESS || text.size() % 4 != 0) return false;
    auto decoded = QByteArray::fromBase64Encoding(
        QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size())),
        QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded) return false;
    bytes = std::move(decoded.decoded);
    return true;
}

std::optional<Element> find(Object object, std::string_view key) {
    std::optional<Element> found;
    for (const auto& [name, value] : object) {
        if (name == key) found = value;
    }
    if (found && found->is_null()) return std::nullopt;
    return found;
}

} // namespace vorq::strict_json
