#include "ui/native/PlateFade.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace vorq {

PlateFade::PlateFade(QQuickItem* parent) : PaintedItem(parent) {
    connect(this, &PlateFade::solidAtTopChanged, this, [this] { update(); });
}

void PlateFade::setPlate(Squircle* plate) {
    if (m_plate == plate) return;
    if (m_plate) m_plate->disconnect(this);
    m_plate = plate;
    const auto repaint = [this] { update(); };
    if (plate) {
        for (const auto signal :
             {&Squircle::fillTopChanged, &Squircle::fillBottomChanged, &Squircle::washChanged,
              &Squircle::specularChanged, &Squircle::rimTopChanged, &Squircle::grainChanged})
            connect(plate, signal, this, repaint);
        connect(plate, &QQuickItem::heightChanged, this, repaint);
        connect(plate, &QQuickItem::widthChanged, this, repaint);
    }
    emit plateChanged();
    update();
}

void PlateFade::paint(QPainter* painter) {
    if (!m_plate || width() <= 0 || height() <= 0) return;
    const double scale = std::max(1.0, std::abs(painter->transform().m11()));
    QImage image(static_cast<int>(std::ceil(width() * scale)),
                 static_cast<int>(std::ceil(height() * scale)),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter drawing(&image);
    drawing.scale(scale, scale);
    drawing.save();
    drawing.translate(-mapToItem(m_plate, QPointF(0, 0)));
    m_plate->paint(&drawing);
    drawing.restore();
    QLinearGradient fade(0, m_solidAtTop ? 0 : height(), 0, m_solidAtTop ? height() : 0);
    fade.setColorAt(0, QColor(0, 0, 0, 255));
    fade.setColorAt(0.35, QColor(0, 0, 0, 180));
    fade.setColorAt(1, QColor(0, 0, 0, 0));
    drawing.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    drawing.fillRect(QRectF(0, 0, width(), height()), fade);
    drawing.end();
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(QRectF(0, 0, image.width() / scale, image.height() / scale), image);
}

} // namespace vorq
