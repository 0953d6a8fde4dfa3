#pragma once

#include <QColor>

/// What of the colours of both themes is reckoned with outside the pages, which have them all: the
/// middle of the glass, its ink, and the blocks of the user.
namespace vorq::ThemeColors {

inline constexpr QColor darkGlass(0x20, 0x22, 0x28);
inline constexpr QColor lightGlass(0xF7, 0xF8, 0xFB);
inline constexpr QColor darkInk(0xF3, 0xF4, 0xF8);
inline constexpr QColor lightInk(0x14, 0x16, 0x1D);
inline constexpr QColor darkUserBlock(0x3B, 0x47, 0x84);
inline constexpr QColor lightUserBlock(0xDF, 0xE5, 0xFF);

} // namespace vorq::ThemeColors
