#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace vorq {

/// What a note or a task belongs to.
enum class HubArea : std::uint8_t { Writing, Research, Study, Personal };

/// "writing", "research", "study" or "personal".
[[nodiscard]] QString rawString(HubArea area);

/// The area of a raw string; nothing for any other.
[[nodiscard]] std::optional<HubArea> hubAreaNamed(QStringView raw);

} // namespace vorq
