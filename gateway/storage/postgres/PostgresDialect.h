#pragma once

#include <string>
#include <string_view>

namespace vorq::gateway {

/// What PostgreSQL understands in place of SQL that is written for all kinds of database.

/// With `$1` for `?` and `?1`.
[[nodiscard]] std::string postgresStatement(std::string_view sql);

/// A step of the schema, which is written in SQLite's dialect.
[[nodiscard]] std::string postgresSchema(std::string_view step);

/// A text as PostgreSQL can store it: where it is no UTF-8, or holds a NUL, with U+FFFD.
[[nodiscard]] std::string postgresText(std::string_view text);

} // namespace vorq::gateway
