#include "shell/overlay/CalloutRows.h"

#include "shell/look/RoundedRows.h"
#include "shell/overlay/CalloutArrow.h"

#include <QLineF>
#include <QPolygonF>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace vorq {
namespace {

// Curves become lines that are as near as a point may tell. Near its feet the arrow is so flat that
// this is not enough.
constexpr double fineness = 16;

// How wide the arrow is so far from the top of its room, in parts of its whole width.
double arrowPart(const QPolygonF& edge, double y) {
    const auto over = std::ranges::find_if(edge, [y](QPointF point) { return point.y() <= y; });
    if (over == edge.begin() || over == edge.end()) return over == edge.begin() ? 1 : 0;
    const QLineF across(*std::prev(over), *over);
    const double x = across.pointAt((across.y1() - y) / (across.y1() - across.y2())).x();
    return 1 - 2 * x / (fineness * calloutArrowRoom.width());
}

// Those pixels whose middle it covers.
std::vector<int> arrowWidths(QSize arrow) {
    const QPainterPath path = calloutArrowEdge();
    const QPolygonF edge =
        path.toSubpathPolygons(QTransform::fromScale(fineness, fineness)).constFirst();
    std::vector<int> widths;
    for (int row = 0; row < arrow.height(); ++row) {
        const double part =
            arrowPart(edge, fineness * calloutCardEdge * (row + 0.5) / arrow.height());
        widths.push_back(static_cast<int>(std::lround(arrow.width() * part)));
    }
    return widths;
}

} // namespace

std::vector<QRect> calloutRows(const CalloutForm& form) {
    std::vector<QRect> card = roundedRows(form.card.size(), form.radius);
    for (QRect& row : card)
        row.translate(form.card.topLeft());
    std::vector<QRect> arrow;
    const std::vector<int> widths = arrowWidths(form.arrow);
    for (int row = 0; row < form.arrow.height(); ++row) {
        const int width = widths[static_cast<std::size_t>(row)];
        const int left = static_cast<int>(std::lround(form.tipX - width / 2.0));
        const int y = form.pointsUp ? form.card.top() - form.arrow.height() + row
                                    : form.card.bottom() + form.arrow.height() - row;
        if (width > 0) arrow.emplace_back(left, y, width, 1);
    }
    if (form.pointsUp) {
        arrow.insert(arrow.end(), card.begin(), card.end());
        return arrow;
    }
    card.insert(card.end(), arrow.rbegin(), arrow.rend());
    return card;
}

} // namespace vorq
