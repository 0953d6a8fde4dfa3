#include "backend/StrictJson.h"

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

std::optional<Element> find(Object object, std::string_view key) {
    std::optional<Element> found;
    for (const auto& [name, value] : object) {
        if (name == key) found = value;
    }
    if (found && found->is_null()) return std::nullopt;
    return found;
}

} // namespace vorq::strict_json
