#include "ui/native/Squircle.h"

#include "ui/native/SquirclePath.h"

#include <QImage>
#include <QPainter>
#include <QRandomGenerator>

#include <algorithm>

namespace vorq {
namespace {

constexpr int grainSize = 128;
constexpr quint32 grainSeed = 7;
constexpr double rimFadeLength = 60;

const QImage& grainTile() {
    static const QImage tile = [] {
        QImage image(grainSize, grainSize, QImage::Format_ARGB32_Premultiplied);
        QRandomGenerator random(grainSeed);
        for (int y = 0; y < grainSize; ++y)
            for (int x = 0; x < grainSize; ++x) {
                const int level = random.bounded(256);
                const int alpha = std::min(255, std::abs(level - 128) * 2);
                const int grey = level > 128 ? 255 : 0;
                image.setPixel(x, y, qPremultiply(qRgba(grey, grey, grey, alpha)));
            }
        return image;
    }();
    return tile;
}

QColor faded(QColor color, double factor) {
    color.setAlphaF(static_cast<float>(factor) * color.alphaF());
    return color;
}

QColor between(QColor top, const QColor& bottom) {
    top.setAlphaF(std::min(1.0F, top.alphaF() * 0.35F + bottom.alphaF() * 0.4F));
    return top;
}

// What lies between two outlines, of which one holds the other.
QPainterPath ringOf(const QPainterPath& outer, const QPainterPath& inner) {
    QPainterPath ring = outer;
    ring.addPath(inner);
    ring.setFillRule(Qt::OddEvenFill);
    return ring;
}

} // namespace

Squircle::Squircle(QQuickItem* parent) : PaintedItem(parent) {
    setAntialiasing(true);
    const auto repaint = [this] { update(); };
    for (const auto signal :
         {&Squircle::radiusChanged, &Squircle::smoothingChanged, &Squircle::fillTopChanged,
          &Squircle::fillBottomChanged, &Squircle::rimTopChanged, &Squircle::rimBottomChanged,
          &Squircle::rimWidthChanged, &Squircle::hairlineChanged, &Squircle::specularChanged,
          &Squircle::washChanged, &Squircle::grainChanged})
        connect(this, signal, this, repaint);
}

void Squircle::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    const QPainterPath body = squirclePath({0, 0, width(), height()}, m_radius, m_smoothing);
    paintFill(*painter, body);
    paintGrain(*painter, body);
    paintEdges(*painter, body);
}

void Squircle::paintFill(QPainter& painter, const QPainterPath& body) const {
    QLinearGradient fill(0, 0, 0, height());
    fill.setColorAt(0, m_fillTop);
    fill.setColorAt(1, m_fillBottom.alpha() == 0 ? m_fillTop : m_fillBottom);
    painter.fillPath(body, fill);
    if (m_wash.alpha() > 0) {
        QRadialGradient wash(QPointF(width() * 0.85, height() * 1.02),
                             std::max(width(), height()) * 0.75);
        wash.setColorAt(0, m_wash);
        wash.setColorAt(1, faded(m_wash, 0));
        painter.fillPath(body, wash);
    }
    if (m_specular.alpha() > 0) {
        QRadialGradient light(QPointF(width() * 0.22, -height() * 0.04),
                              std::max(width(), height() * 0.55));
        light.setColorAt(0, m_specular);
        light.setColorAt(0.45, faded(m_specular, 0.35));
        light.setColorAt(1, faded(m_specular, 0));
        painter.fillPath(body, light);
    }
}

void Squircle::paintGrain(QPainter& painter, const QPainterPath& body) const {
    if (m_grain <= 0) return;
    painter.save();
    painter.setClipPath(body);
    painter.setOpacity(m_grain);
    painter.fillRect(QRectF(0, 0, width(), height()), QBrush(grainTile()));
    painter.restore();
}

void Squircle::paintEdges(QPainter& painter, const QPainterPath& body) const {
    const double line = m_hairline.alpha() > 0 ? 1 : 0;
    const QRectF inside(line, line, width() - 2 * line, height() - 2 * line);
    const QPainterPath within = squirclePath(inside, std::max(0.0, m_radius - line), m_smoothing);
    if (m_rimTop.alpha() > 0 || m_rimBottom.alpha() > 0) {
        const QRectF inner = inside.adjusted(m_rimWidth, m_rimWidth, -m_rimWidth, -m_rimWidth);
        const QPainterPath ring = ringOf(
            within, squirclePath(inner, std::max(0.0, m_radius - line - m_rimWidth), m_smoothing));
        QLinearGradient rim(0, 0, 0, height());
        rim.setColorAt(0, m_rimTop);
        rim.setColorAt(std::min(0.5, rimFadeLength / std::max(1.0, height())),
                       m_rimTop == m_rimBottom ? m_rimTop : between(m_rimTop, m_rimBottom));
        rim.setColorAt(1, m_rimBottom);
        painter.fillPath(ring, rim);
    }
    if (line > 0) painter.fillPath(ringOf(body, within), m_hairline);
}

} // namespace vorq
