#include "ui/writing/SelectionArrowShape.h"

#include "shell/overlay/CalloutArrow.h"

#include <QPainter>
#include <QPainterPath>

namespace vorq {
namespace {

constexpr double lineWidth = 1; // as that of the card

// What of the body is so near to its edge.
QPainterPath alongEdge(const QPainterPath& body, double depth) {
    QPainterPathStroker stroker;
    stroker.setWidth(2 * depth);
    return stroker.createStroke(calloutArrowEdge(2 * depth)).intersected(body);
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
    painter->scale(width() / calloutArrowRoom.width(), height() / calloutArrowRoom.height());
    if (!m_pointsUp) {
        painter->translate(0, calloutArrowRoom.height());
        painter->scale(1, -1);
    }
    QPainterPath body = calloutArrowEdge(0);
    body.lineTo(calloutArrowRoom.width(), calloutArrowRoom.height());
    body.lineTo(0, calloutArrowRoom.height());
    body.closeSubpath();
    painter->fillPath(body, m_fill);
    const QPainterPath outer = alongEdge(body, lineWidth);
    painter->fillPath(alongEdge(body, 2 * lineWidth).subtracted(outer), m_rim);
    painter->fillPath(outer, m_hairline);
}

} // namespace vorq
