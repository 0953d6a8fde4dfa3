#pragma once

#include <QFont>

namespace vorq::Fonts {

/// Sizes are logical pixels and may have fractions. Where a family is not installed the system's
/// own takes its place.
[[nodiscard]] QFont sans(double pixels, QFont::Weight weight);
[[nodiscard]] QFont mono(double pixels, QFont::Weight weight);

/// Emoji are drawn in colour, also those that other fonts have as line drawings.
void preferColourEmoji();

/// The size in points, since a size in pixels knows no fractions.
[[nodiscard]] double points(double pixels);

} // namespace vorq::Fonts
