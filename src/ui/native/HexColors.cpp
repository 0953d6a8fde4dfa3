#include "ui/native/HexColors.h"

#include "shell/HexColor.h"
#include "support/Text.h"

#include <algorithm>
#include <cmath>

namespace vorq {
namespace {

constexpr double readableContrast = 4.5;

double linear(double level) {
    return level <= 0.04045 ? level / 12.92 : std::pow((level + 0.055) / 1.055, 2.4);
}

double luminance(double red, double green, double blue) {
    return 0.2126 * linear(red) + 0.7152 * linear(green) + 0.0722 * linear(blue);
}

} // namespace

HexEntry HexColors::commit(const QString& draft) {
    if (trimmed(draft).isEmpty()) return {true, {}};
    const std::optional<QString> hex = HexColor::normalize(draft);
    return {hex.has_value(), hex.value_or(QString())};
}

QColor HexColors::color(const QString& hex) {
    const std::optional<RgbaColor> parsed = HexColor::rgbaComponents(hex);
    if (!parsed) return {};
    return QColor::fromRgbF(static_cast<float>(parsed->red), static_cast<float>(parsed->green),
                            static_cast<float>(parsed->blue), static_cast<float>(parsed->alpha));
}

bool HexColors::isLowContrast(const QString& hex) {
    const std::optional<RgbaColor> fill = HexColor::rgbaComponents(hex);
    if (!fill) return false;
    const double grey = linear(HexColor::contrastingForeground(hex));
    const double plate = luminance(fill->red, fill->green, fill->blue);
    const double contrast = (std::max(grey, plate) + 0.05) / (std::min(grey, plate) + 0.05);
    return contrast < readableContrast;
}

QString HexColors::hexOf(const QColor& color) {
    if (!color.isValid()) return HexColor::hex(std::nullopt);
    const QColor rgb = color.toRgb();
    return HexColor::hex(RgbaColor{rgb.redF(), rgb.greenF(), rgb.blueF(), rgb.alphaF()});
}

} // namespace vorq
