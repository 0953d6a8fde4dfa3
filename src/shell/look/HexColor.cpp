#include "shell/look/HexColor.h"

#include "support/text/Text.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace vorq::HexColor {
namespace {

constexpr double lightestDarkColor = 0.55;
constexpr double greyOnLight = 0.12;
constexpr double greyOnDark = 0.95;
constexpr double greyOnUnknown = 0.9;

bool isHexDigit(QChar character) {
    return (character >= u'0' && character <= u'9') || (character >= u'A' && character <= u'F');
}

double componentAt(QStringView digits, qsizetype index) {
    return digits.sliced(2 * index, 2).toInt(nullptr, 16) / 255.0;
}

int byteOf(double component) {
    return static_cast<int>(std::lround(std::clamp(component, 0.0, 1.0) * 255));
}

QString byteText(double component) {
    return u"%1"_s.arg(byteOf(component), 2, 16, QLatin1Char('0')).toUpper();
}

QString sixDigits(const RgbaColor& color) {
    return u'#' + byteText(color.red) + byteText(color.green) + byteText(color.blue);
}

} // namespace

std::optional<RgbaColor> rgbaComponents(QStringView text) {
    const QString upperCase = trimmed(text).toString().toUpper();
    QStringView digits = upperCase;
    if (digits.startsWith(u'#')) digits = digits.sliced(1);
    if (digits.size() != 6 && digits.size() != 8) return std::nullopt;
    if (!std::ranges::all_of(digits, isHexDigit)) return std::nullopt;
    return RgbaColor{.red = componentAt(digits, 0),
                     .green = componentAt(digits, 1),
                     .blue = componentAt(digits, 2),
                     .alpha = digits.size() == 8 ? componentAt(digits, 3) : 1.0};
}

std::optional<QString> normalize(QStringView text) {
    const std::optional<RgbaColor> color = rgbaComponents(text);
    if (!color) return std::nullopt;
    const bool isOpaque = byteOf(color->alpha) > 254;
    return isOpaque ? sixDigits(*color) : sixDigits(*color) + byteText(color->alpha);
}

double contrastingForeground(QStringView text) {
    const std::optional<RgbaColor> color = rgbaComponents(text);
    if (!color) return greyOnUnknown;
    const double luminance = 0.2126 * color->red + 0.7152 * color->green + 0.0722 * color->blue;
    return luminance > lightestDarkColor ? greyOnLight : greyOnDark;
}

QString hex(const std::optional<RgbaColor>& color) {
    return color ? sixDigits(*color) : u"#808080"_s;
}

} // namespace vorq::HexColor
