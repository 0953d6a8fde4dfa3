#pragma once

namespace vorq {

/// What the status item shows: its glyph, or for a moment how something ended.
enum class StatusImage { Glyph, Check, Fail };

} // namespace vorq
