#pragma once

namespace vorq {

/// What the status item shows: its glyph, for a moment how something ended, or that it is to be
/// looked at.
enum class StatusImage { Glyph, Check, Fail, Attention };

} // namespace vorq
