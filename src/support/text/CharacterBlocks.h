#pragma once

namespace vorq {

/// Whether this processor can take blocks of characters at once.
[[nodiscard]] bool hasCharacterBlocks();

/// Writes UTF-16 as UTF-8 by blocks while they last, and moves both places to where it stopped: at
/// a block with half a surrogate pair or something that JSON escapes, `more` among it, or at one of
/// ASCII alone, for which there are faster ways. There must be room for six bytes for each unit.
/// Asks for hasCharacterBlocks().
void copyCharacterBlocks(const char16_t*& from, const char16_t* end, char*& to, char16_t more);

} // namespace vorq
