#include "shell/look/Contrast.h"

#include <algorithm>
#include <cmath>

namespace vorq::Contrast {
namespace {

constexpr int steps = 10;

double linear(double level) {
    return level <= 0.04045 ? level / 12.92 : std::pow((level + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    const QColor rgb = color.toRgb();
    return 0.2126 * linear(rgb.redF()) + 0.7152 * linear(rgb.greenF()) +
           0.0722 * linear(rgb.blueF());
}

QColor between(const QColor& from, const QColor& to, float share) {
    const QColor a = from.toRgb();
    const QColor b = to.toRgb();
    const auto mixed = [share](float x, float y) { return x + (y - x) * share; };
    return QColor::fromRgbF(mixed(a.redF(), b.redF()), mixed(a.greenF(), b.greenF()),
                            mixed(a.blueF(), b.blueF()));
}

} // namespace

double ratio(const QColor& first, const QColor& second) {
    const double a = luminance(first);
    const double b = luminance(second);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor over(const QColor& color, const QColor& ground) {
    return between(ground, color, color.alphaF());
}

QColor readable(const QColor& color, const QColor& ground, const QColor& strongest) {
    for (int step = 0; step < steps; ++step) {
        const QColor tried = between(color, strongest, static_cast<float>(step) / steps);
        if (ratio(tried, ground) >= readableText) return tried;
    }
    return strongest;
}

} // namespace vorq::Contrast
