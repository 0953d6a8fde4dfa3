#include "ui/native/HexColors.h"

#include "shell/look/Contrast.h"
#include "shell/look/HexColor.h"
#include "support/text/Text.h"

namespace vorq {

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
    const double grey = HexColor::contrastingForeground(hex);
    return Contrast::ratio(QColor::fromRgbF(static_cast<float>(grey), static_cast<float>(grey),
                                            static_cast<float>(grey)),
                           color(hex)) < Contrast::readableText;
}

QColor HexColors::readable(const QColor& color, const QColor& ground, const QColor& strongest) {
    return Contrast::readable(color, ground, strongest);
}

QString HexColors::hexOf(const QColor& color) {
    if (!color.isValid()) return HexColor::hex(std::nullopt);
    const QColor rgb = color.toRgb();
    return HexColor::hex(RgbaColor{rgb.redF(), rgb.greenF(), rgb.blueF(), rgb.alphaF()});
}

} // namespace vorq
