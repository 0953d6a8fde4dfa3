#pragma once

#include <QString>

#include <string_view>

namespace vorq {

/// What stands between the quotation marks of a JSON string, as text. The body must be valid UTF-8
/// without control characters, as it is when simdjson has looked at it. False for an escape that
/// JSON does not know and for half a surrogate pair.
[[nodiscard]] bool unescapeJson(std::string_view body, QString& text);

} // namespace vorq
