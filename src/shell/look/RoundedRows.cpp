#include "shell/look/RoundedRows.h"

#include <algorithm>
#include <cmath>

namespace vorq {
namespace {

// How many pixels of a row lie outside the arc, the row's middle being so far above its centre.
int inset(double radius, double height) {
    const double reach = std::sqrt(std::max(radius * radius - height * height, 0.0));
    return static_cast<int>(std::ceil(radius - reach - 0.5));
}

} // namespace

std::vector<QRect> roundedRows(QSize pixels, double radius) {
    std::vector<QRect> rows;
    if (pixels.isEmpty()) return rows;
    const double round = std::clamp(radius, 0.0, std::min(pixels.width(), pixels.height()) / 2.0);
    for (int y = 0; y < pixels.height(); ++y) {
        const double middle = y + 0.5;
        const double above = std::max({round - middle, middle - (pixels.height() - round), 0.0});
        const int cut = std::max(above > 0 ? inset(round, above) : 0, 0);
        const QRect row(cut, y, pixels.width() - 2 * cut, 1);
        if (row.width() <= 0) continue;
        if (!rows.empty() && rows.back().x() == row.x() && rows.back().width() == row.width())
            rows.back().setBottom(y);
        else
            rows.push_back(row);
    }
    return rows;
}

} // namespace vorq
