#include "ui/native/IconPainter.h"

#include "ui/native/IconDrawing.h"

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace vorq {

IconPainter::IconPainter(QQuickItem* parent) : PaintedItem(parent) {
    setAntialiasing(true);
    for (const auto signal :
         {&IconPainter::nameChanged, &IconPainter::colorChanged, &IconPainter::weightChanged})
        connect(this, signal, this, [this] { update(); });
}

void IconPainter::render(const QString& drawing, QPainter& painter, const QRectF& into) const {
    QString document = drawing;
    document.replace("currentColor"_L1, m_color.name(QColor::HexRgb));
    document.replace("stroke-width=\"1.75\""_L1, u"stroke-width=\"%1\""_s.arg(m_weight));
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(document.toUtf8()).render(&painter, into);
}

// Into a picture first: cut-outs take away what is drawn, and where strokes cross a translucent
// colour must not double.
void IconPainter::paint(QPainter* painter) {
    if (m_name.isEmpty() || width() <= 0 || height() <= 0) return;
    const IconDrawing icon = IconDrawing::of(m_name);
    const double scale = std::max(1.0, std::abs(painter->transform().m11()));
    const QSize size(static_cast<int>(std::ceil(width() * scale)),
                     static_cast<int>(std::ceil(height() * scale)));
    const QRectF whole(0, 0, width() * scale, height() * scale);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter drawing(&image);
    render(icon.drawn, drawing, whole);
    if (!icon.cutOut.isEmpty()) {
        drawing.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        render(icon.cutOut, drawing, whole);
    }
    drawing.end();
    painter->setOpacity(m_color.alphaF());
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(QRectF(0, 0, image.width() / scale, image.height() / scale), image);
}

} // namespace vorq
