#include "ui/native/SquirclePath.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace vorq {
namespace {

constexpr double smallestRadius = 0.01;

// The measures of one corner along its edges.
struct Corner {
    double reach; // how far from the corner the curve begins
    double arc;   // degrees of plain arc in its middle
    double a, b, c, d;
    double radius;
};

Corner cornerOf(double radius, double smoothing, double budget) {
    double reach = (1 + smoothing) * radius;
    if (reach > budget) {
        smoothing = std::max(0.0, budget / radius - 1);
        reach = std::min(reach, budget);
    }
    const double arc = 90 * (1 - smoothing);
    const double arcLength = std::sin(qDegreesToRadians(arc / 2)) * radius * M_SQRT2;
    const double turn = (90 - arc) / 2;
    const double tangent = radius * std::tan(qDegreesToRadians(turn / 2));
    const double lean = qDegreesToRadians(45 * smoothing);
    const double c = tangent * std::cos(lean);
    const double d = c * std::tan(lean);
    const double b = (reach - arcLength - c - d) / 3;
    return {reach, arc, 2 * b, b, c, d, radius};
}

// A point of a corner: u along the edge that leads to it, v inwards.
QPointF pointAt(const QRectF& rect, int corner, double reach, double u, double v) {
    switch (corner) {
    case 0:
        return {rect.right() - reach + u, rect.top() + v};
    case 1:
        return {rect.right() - v, rect.bottom() - reach + u};
    case 2:
        return {rect.left() + reach - u, rect.bottom() - v};
    default:
        return {rect.left() + v, rect.top() + reach - u};
    }
}

void addCorner(QPainterPath& path, const QRectF& rect, int corner, const Corner& m) {
    const auto at = [&](double u, double v) { return pointAt(rect, corner, m.reach, u, v); };
    path.cubicTo(at(m.a, 0), at(m.a + m.b, 0), at(m.a + m.b + m.c, m.d));
    if (m.arc > smallestRadius) {
        const double from = qDegreesToRadians(45 + m.arc / 2);
        const double to = qDegreesToRadians(45 - m.arc / 2);
        const double pull = 4.0 / 3.0 * std::tan((from - to) / 4) * m.radius;
        const QPointF centre(m.reach - m.radius, m.radius);
        const auto onArc = [&](double angle) {
            return centre + m.radius * QPointF(std::cos(angle), -std::sin(angle));
        };
        const QPointF first = onArc(from) + pull * QPointF(std::sin(from), std::cos(from));
        const QPointF second = onArc(to) - pull * QPointF(std::sin(to), std::cos(to));
        const QPointF last = onArc(to);
        path.cubicTo(at(first.x(), first.y()), at(second.x(), second.y()), at(last.x(), last.y()));
    }
    path.cubicTo(at(m.reach, m.reach - m.a - m.b), at(m.reach, m.reach - m.a),
                 at(m.reach, m.reach));
}

} // namespace

QPainterPath squirclePath(const QRectF& rect, double radius, double smoothing) {
    const double budget = std::min(rect.width(), rect.height()) / 2;
    radius = std::min(radius, budget);
    QPainterPath path;
    if (radius <= smallestRadius) {
        path.addRect(rect);
        return path;
    }
    const Corner corner = cornerOf(radius, smoothing, budget);
    path.moveTo(pointAt(rect, 0, corner.reach, 0, 0));
    for (int index = 0; index < 4; ++index) {
        path.lineTo(pointAt(rect, index, corner.reach, 0, 0));
        addCorner(path, rect, index, corner);
    }
    path.closeSubpath();
    return path;
}

} // namespace vorq
