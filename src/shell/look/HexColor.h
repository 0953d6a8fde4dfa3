#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace vorq {

/// A colour in sRGB; each component is within 0 to 1.
struct RgbaColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    bool operator==(const RgbaColor&) const = default;
};

/// Colours as the user writes them: six or eight hexadecimal digits, red first and alpha last,
/// with or without a "#" in front. Pure functions.
namespace HexColor {

/// Nothing if the text is no such colour.
[[nodiscard]] std::optional<RgbaColor> rgbaComponents(QStringView text);

/// The colour in its stored form, "#RRGGBB", or "#RRGGBBAA" unless it is opaque; nothing if the
/// text is no colour.
[[nodiscard]] std::optional<QString> normalize(QStringView text);

/// The level of grey, 0 black to 1 white, that can be read on the colour.
[[nodiscard]] double contrastingForeground(QStringView text);

/// Six digits for a colour of the toolkit; nothing stands for one that has no form in sRGB.
[[nodiscard]] QString hex(const std::optional<RgbaColor>& color);

} // namespace HexColor
} // namespace vorq
