#include "ui/reply/ReplyCanvas.h"

#include "ui/reply/ReplyView.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace vorq {
namespace {

constexpr int largestSide = 1 << 20;

} // namespace

ReplyCanvas::ReplyCanvas(ReplyView& view) : QQuickPaintedItem(&view), m_view(view) {
    setAntialiasing(true);
}

void ReplyCanvas::paint(QPainter* painter) {
    painter->setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter->translate(0, -y());
    ReplyLayout::Look look;
    look.selection = m_view.selection();
    look.arrivingFrom = m_view.m_arrivingFrom;
    look.arrivingOpacity = m_view.arrivalOpacity();
    QRectF strip(0, y(), width(), height());
    if (painter->hasClipping()) strip &= painter->clipBoundingRect();
    m_view.layout().draw(*painter, strip, look);
}

// Always as a rectangle: update() without one is forgotten for a part that is asked for after it.
void ReplyCanvas::repaintFrom(double replyY) {
    const double top = std::max(0.0, std::floor(replyY - y()));
    if (top < height()) update(QRect(0, static_cast<int>(top), largestSide, largestSide));
}

// A node that is new has nothing painted yet, whatever part was asked for.
QSGNode* ReplyCanvas::updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) {
    if (!node) repaint();
    return QQuickPaintedItem::updatePaintNode(node, data);
}

} // namespace vorq
