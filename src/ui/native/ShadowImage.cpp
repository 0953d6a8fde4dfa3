#include "ui/native/ShadowImage.h"

#include "ui/native/SquirclePath.h"

#include <QPainter>
#include <QStringList>

#include <algorithm>
#include <vector>

namespace vorq {
namespace {

constexpr double smoothing = 0.6;
constexpr int largestSide = 1024;
constexpr int blurPasses = 3; // of a box, which together come near to a bell curve

using Field = std::vector<float>;

// Along one line of so many values, each `step` after the one before.
void blurLine(const float* from, float* to, int count, int step, int reach) {
    const auto at = [&](int i) { return from[std::clamp(i, 0, count - 1) * step]; };
    float sum = 0;
    for (int i = -reach; i <= reach; ++i)
        sum += at(i);
    const float share = 1.0F / static_cast<float>(2 * reach + 1);
    for (int i = 0; i < count; ++i) {
        to[i * step] = sum * share;
        sum += at(i + reach + 1) - at(i - reach);
    }
}

void blur(Field& field, int side, int reach) {
    Field other(field.size());
    for (int y = 0; y < side; ++y)
        blurLine(&field[static_cast<std::size_t>(y * side)],
                 &other[static_cast<std::size_t>(y * side)], side, 1, reach);
    for (int x = 0; x < side; ++x)
        blurLine(&other[static_cast<std::size_t>(x)], &field[static_cast<std::size_t>(x)], side,
                 side, reach);
}

Field coverage(int side, const QRectF& plate, double radius) {
    QImage mask(side, side, QImage::Format_Alpha8);
    mask.fill(0);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(squirclePath(plate, radius, smoothing), Qt::black);
    painter.end();
    Field field(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            field[static_cast<std::size_t>(y * side + x)] =
                static_cast<float>(mask.constScanLine(y)[x]) / 255.0F;
    return field;
}

} // namespace

QImage shadowImage(const ShadowShape& shape, double scale) {
    const double core = (2 * shape.edge + 2) * scale;
    const double margin = shape.margin * scale;
    const double radius = shape.radius * scale;
    const int side = std::clamp(qRound(core + 2 * margin), 1, largestSide);
    Field shade(static_cast<std::size_t>(side) * static_cast<std::size_t>(side), 0.0F);
    for (const QString& part : shape.layers.split(u'/')) {
        const QStringList layer = part.split(u',');
        const double down = layer.value(0).toInt() * scale;
        Field field = coverage(side, QRectF(margin, margin + down, core, core), radius);
        const int reach = std::max(1, qRound(layer.value(1).toInt() * scale / 4));
        for (int pass = 0; pass < blurPasses; ++pass)
            blur(field, side, reach);
        const float alpha = layer.value(2).toFloat();
        for (std::size_t i = 0; i < shade.size(); ++i)
            shade[i] = 1 - (1 - shade[i]) * (1 - field[i] * alpha);
    }
    const Field plate =
        coverage(side, QRectF(margin, margin, core, core).adjusted(0.5, 0.5, -0.5, -0.5), radius);
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            const auto at = static_cast<std::size_t>(y * side + x);
            image.setPixel(x, y, qRgba(0, 0, 0, qRound(shade[at] * 255 * (1 - plate[at]))));
        }
    return image;
}

} // namespace vorq
