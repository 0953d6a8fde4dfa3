#include "ui/writing/SelectionArrowShape.h"

#include <QPainter>
#include <QPainterPath>

namespace vorq {
namespace {

// In a room of this size, the card beginning above its lowest points.
constexpr QSizeF arrowRoom(40, 16);
constexpr double cardEdge = 13;
constexpr double lineWidth = 1; // as that of the card

// Along the card's edge, up to the tip and down again. It begins and ends so far beside the room.
QPainterPath edgeCurve(double beyond) {
    const double end = arrowRoom.width();
    QPainterPath path(QPointF(-beyond, cardEdge));
    path.lineTo(0, cardEdge);
    path.cubicTo(7.5, cardEdge, 11, 10.2, 16, 4.5);
    path.cubicTo(18.3, 1.7, 21.7, 1.7, 24, 4.5);
    path.cubicTo(end - 11, 10.2, end - 7.5, cardEdge, end, cardEdge);
    path.lineTo(end + beyond, cardEdge);
    return path;
}

// What of the body is so near to its edge.
QPainterPath alongEdge(const QPainterPath& body, double depth) {
    QPainterPathStroker stroker;
    stroker.setWidth(2 * depth);
    return stroker.createStroke(edgeCurve(2 * depth)).intersected(body);
}

} // namespace

SelectionArrowShape::SelectionArrowShape(QQuickItem* parent) : PaintedItem(parent) {
    for (const auto signal :
         {&SelectionArrowShape::pointsUpChanged, &SelectionArrowShape::fillChanged,
          &SelectionArrowShape::rimChanged, &SelectionArrowShape::hairlineChanged})
        connect(this, signal, this, &QQuickItem::update);
}

void SelectionArrowShape::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->scale(width() / arrowRoom.width(), height() / arrowRoom.height());
    if (!m_pointsUp) {
        painter->translate(0, arrowRoom.height());
        painter->scale(1, -1);
    }
    QPainterPath body = edgeCurve(0);
    body.lineTo(arrowRoom.width(), arrowRoom.height());
    body.lineTo(0, arrowRoom.height());
    body.closeSubpath();
    painter->fillPath(body, m_fill);
    const QPainterPath outer = alongEdge(body, lineWidth);
    painter->fillPath(alongEdge(body, 2 * lineWidth).subtracted(outer), m_rim);
    painter->fillPath(outer, m_hairline);
}

} // namespace vorq
