#pragma once

#include <map>
#include <string>
#include <string_view>

namespace vorq::gateway {

/// The fields of a query or a form by their names.
using Fields = std::map<std::string, std::string, std::less<>>;

/// Reads "name=value&…" as a browser writes it. Throws ApiError 400 for what none would write:
/// broken escapes, a name that comes twice, characters other than UTF-8, very many fields.
[[nodiscard]] Fields parseFields(std::string_view text);

/// The value of a field, empty if there is none.
[[nodiscard]] std::string fieldIn(const Fields& fields, std::string_view name);

/// `text` with everything escaped that means something in a URL.
[[nodiscard]] std::string urlEscaped(std::string_view text);

} // namespace vorq::gateway
