#include "ui/reply/ReplyCanvas.h"

#include "ui/reply/ReplyView.h"

#include <QPainter>

namespace vorq {

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
    m_view.layout().draw(*painter, QRectF(0, y(), width(), height()), look);
}

} // namespace vorq
