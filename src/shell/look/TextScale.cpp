#include "shell/look/TextScale.h"

#include <cmath>

namespace vorq {
namespace {

// Ratios come from whole numbers of dots per inch.
constexpr double tolerance = 0.02;

} // namespace

double remainingTextScale(double wanted, double pixelRatio) {
    const double screenScale = pixelRatio / wanted;
    const double whole = std::round(screenScale);
    const bool isDone = whole >= 1 && std::abs(screenScale - whole) < tolerance;
    return isDone ? 1 : wanted;
}

} // namespace vorq
