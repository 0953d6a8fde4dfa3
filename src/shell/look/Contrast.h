#pragma once

#include <QColor>

/// What can be read on what. Ratios are those of WCAG 2, from 1 to 21; pure functions.
namespace vorq::Contrast {

/// What text of the usual size needs.
inline constexpr double readableText = 4.5;

/// What text needs in high contrast.
inline constexpr double strongText = 7;

/// Of the colours as if they were opaque.
[[nodiscard]] double ratio(const QColor& first, const QColor& second);

/// What is seen of a colour on an opaque ground.
[[nodiscard]] QColor over(const QColor& color, const QColor& ground);

/// The colour, or as little of the way towards the strongest as makes it readable on the ground. If
/// nothing does, the strongest.
[[nodiscard]] QColor readable(const QColor& color, const QColor& ground, const QColor& strongest);

} // namespace vorq::Contrast
