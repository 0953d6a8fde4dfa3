#include "ui/native/PaintedItem.h"

#include <QImage>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

namespace vorq {

PaintedItem::PaintedItem(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

QSGNode* PaintedItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData*) {
    m_isDue = !isVisible();
    if (m_isDue) return old;
    auto* node = static_cast<QSGImageNode*>(old);
    const QSize size = QSizeF(width(), height()).toSize();
    if (size.isEmpty()) {
        delete node;
        return nullptr;
    }
    if (node == nullptr) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
    }
    node->setTexture(
        window()->createTextureFromImage(picture(size), QQuickWindow::TextureHasAlphaChannel));
    node->setSourceRect(QRectF(QPointF(0, 0), node->texture()->textureSize()));
    node->setRect(QRectF(QPointF(0, 0), size));
    node->setFiltering(smooth() ? QSGTexture::Linear : QSGTexture::Nearest);
    return node;
}

QImage PaintedItem::picture(QSize size) {
    const double scale = window()->effectiveDevicePixelRatio();
    QImage image((QSizeF(size) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, antialiasing());
    painter.scale(scale, scale);
    paint(&painter);
    return image;
}

void PaintedItem::itemChange(ItemChange change, const ItemChangeData& data) {
    const bool isShown = change == ItemVisibleHasChanged && data.boolValue;
    if (change == ItemDevicePixelRatioHasChanged || (isShown && m_isDue)) update();
    QQuickItem::itemChange(change, data);
}

} // namespace vorq
