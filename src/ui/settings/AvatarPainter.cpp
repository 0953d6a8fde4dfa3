#include "ui/settings/AvatarPainter.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace vorq {

AvatarPainter::AvatarPainter(QQuickItem* parent) : PaintedItem(parent) {
    setAntialiasing(true);
}

void AvatarPainter::setPicture(AvatarPicture* picture) {
    if (m_picture == picture) return;
    if (m_picture) m_picture->disconnect(this);
    m_picture = picture;
    if (picture != nullptr) connect(picture, &AvatarPicture::changed, this, [this] { update(); });
    update();
    emit pictureChanged();
}

// The middle of it, as much as a circle holds, and before it is scaled: a thin picture is long.
// Smaller before it is a brush, which takes no pixels between.
void AvatarPainter::paint(QPainter* painter) {
    if (!m_picture || !m_picture->isThere()) return;
    const QImage& image = m_picture->image();
    const double side = std::min(width(), height());
    const double scale = painter->transform().m11();
    const int pixels = std::max(1, qRound(side * scale));
    const int edge = std::min(image.width(), image.height());
    const QRect middle((image.width() - edge) / 2, (image.height() - edge) / 2, edge, edge);
    const QImage shown =
        image.copy(middle).scaled(pixels, pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QPainterPath circle;
    circle.addEllipse(QRectF(0, 0, side, side));
    QBrush brush(shown);
    brush.setTransform(QTransform::fromScale(1 / scale, 1 / scale));
    painter->setPen(Qt::NoPen);
    painter->setBrush(brush);
    painter->drawPath(circle);
}

} // namespace vorq
