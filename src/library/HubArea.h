#pragma once

#include <cstdint>

namespace vorq {

/// What a note or a task belongs to.
enum class HubArea : std::uint8_t { Writing, Research, Study, Personal };

} // namespace vorq
