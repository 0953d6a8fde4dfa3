#include "platform/linux/x11/PixelScreens.h"

#include <algorithm>
#include <cmath>

namespace vorq {
namespace {

constexpr double stepsOfScale = 4;
constexpr double leastScale = 1;
constexpr double mostScale = 4;

double inSteps(double ratio) {
    return std::round(ratio * stepsOfScale) / stepsOfScale;
}

} // namespace

QRectF pointsOf(const QRectF& pixels, const std::vector<PixelScreen>& screens) {
    const auto screen = std::ranges::find_if(screens, [&](const PixelScreen& each) {
        return QRectF(each.pixels).contains(pixels.center());
    });
    if (screen == screens.end()) return pixels;
    const QPointF corner = screen->pixels.topLeft();
    return {corner + (pixels.topLeft() - corner) / screen->scale, pixels.size() / screen->scale};
}

std::optional<double> toolkitScale(QSizeF pixels, QSizeF told) {
    if (told.isEmpty() || pixels.isEmpty()) return std::nullopt;
    const double scale = inSteps(pixels.width() / told.width());
    const double other = inSteps(pixels.height() / told.height());
    // A title above the contents takes little of the height.
    const bool isOneWindow = other <= scale && other >= scale - 1 / stepsOfScale;
    if (!isOneWindow || scale < leastScale || scale > mostScale) return std::nullopt;
    return scale;
}

QRectF ToolkitPlace::pixelsOf(const QRectF& told) const {
    return {pixels + (told.topLeft() - points) * scale, told.size() * scale};
}

ToolkitPlace toolkitPlace(const QRectF& pixels, const QRectF& told) {
    ToolkitPlace place{.scale = toolkitScale(pixels.size(), told.size()).value_or(1)};
    const QSizeF beyond = told.size() * place.scale - pixels.size();
    // Whole points are told.
    const bool isWithoutFrame =
        std::abs(beyond.width()) < place.scale && std::abs(beyond.height()) < place.scale;
    if (place.scale != 1 && isWithoutFrame) {
        place.pixels = pixels.topLeft();
        place.points = told.topLeft();
    }
    return place;
}

} // namespace vorq
