#pragma once

#include <string_view>

namespace vorq::gateway {

/// Whether a lower-cased word carries grammar rather than content, in the larger European
/// languages.
[[nodiscard]] bool isStopWord(std::string_view word);

/// Whether a lower-cased word names a month or a day of the week.
[[nodiscard]] bool isCalendarWord(std::string_view word);

} // namespace vorq::gateway
