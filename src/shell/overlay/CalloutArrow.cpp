#include "shell/overlay/CalloutArrow.h"

namespace vorq {

QPainterPath calloutArrowEdge(double beyond) {
    const double end = calloutArrowRoom.width();
    QPainterPath path(QPointF(-beyond, calloutCardEdge));
    path.lineTo(0, calloutCardEdge);
    path.cubicTo(7.5, calloutCardEdge, 11, 10.2, 16, 4.5);
    path.cubicTo(18.3, 1.7, 21.7, 1.7, 24, 4.5);
    path.cubicTo(end - 11, 10.2, end - 7.5, calloutCardEdge, end, calloutCardEdge);
    path.lineTo(end + beyond, calloutCardEdge);
    return path;
}

} // namespace vorq
