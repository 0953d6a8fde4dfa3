#include "shell/look/StatusGlyphs.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QPolygonF>

#include <algorithm>

namespace vorq {
namespace {

constexpr double grid = 18;
constexpr double bladeEdge = 0.9;
constexpr double discRadius = 7.7;
constexpr double signStroke = 2;
constexpr QRgb white = 0xffffffff;
constexpr QRgb iris = 0xff5b78fb;
constexpr QRgb ember = 0xffe5631a;
constexpr QRgb checkGreen = 0xff27935a;
constexpr QRgb failRed = 0xffd4423a;
constexpr double markOnDisc = 0.62;  // of its size
constexpr double sizeAtLowest = 0.7; // so that it stays whole within its square

struct MarkColors {
    QRgb left;
    QRgb right;
};

void paintBlade(QPainter& painter, QRgb color, const QPolygonF& corners) {
    painter.setPen(QPen(QColor(color), bladeEdge, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(QColor(color));
    painter.drawPolygon(corners);
}

void paintMark(QPainter& painter, const MarkColors& colors) {
    paintBlade(painter, colors.left,
               QPolygonF({{1.2, 2.74}, {4.82, 2.74}, {10.92, 15.96}, {7.19, 15.96}}));
    paintBlade(painter, colors.right,
               QPolygonF({{13.18, 2.74}, {16.8, 2.74}, {11.83, 13.47}, {10.07, 9.46}}));
}

void paintDisc(QPainter& painter, QRgb color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(color));
    painter.drawEllipse(QPointF(grid / 2, grid / 2), discRadius, discRadius);
    painter.setPen(QPen(Qt::white, signStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
}

// Smaller the lower it is.
void lower(QPainter& painter, double drop) {
    const double scale = 1 - (1 - sizeAtLowest) * drop;
    painter.translate(grid / 2 * (1 - scale), grid * (1 - scale));
    painter.scale(scale, scale);
}

void paintMarkOnDisc(QPainter& painter) {
    paintDisc(painter, ember);
    painter.save();
    painter.translate(grid / 2, grid / 2);
    painter.scale(markOnDisc, markOnDisc);
    painter.translate(-grid / 2, -grid / 2);
    paintMark(painter, {.left = white, .right = white});
    painter.restore();
}

void paint(QPainter& painter, StatusImage image) {
    switch (image) {
    case StatusImage::Glyph:
        return paintMark(painter, {.left = iris, .right = ember});
    case StatusImage::Check:
        paintDisc(painter, checkGreen);
        return painter.drawPolyline(QPolygonF({{5.3, 9.3}, {8, 12}, {12.9, 6.4}}));
    case StatusImage::Fail:
        paintDisc(painter, failRed);
        painter.drawLine(QPointF(6.3, 6.3), QPointF(11.7, 11.7));
        return painter.drawLine(QPointF(11.7, 6.3), QPointF(6.3, 11.7));
    case StatusImage::Attention:
        return paintMarkOnDisc(painter);
    }
}

// Paints the sizes that are asked for when they are.
class StatusIconEngine final : public QIconEngine {
  public:
    StatusIconEngine(StatusImage image, double drop) : m_image(image), m_drop(drop) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        const double side = std::min(rect.width(), rect.height());
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(QRectF(rect).center() - QPointF(side / 2, side / 2));
        painter->scale(side / grid, side / grid);
        paintStatusImage(*painter, m_image, m_drop);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }

    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        QList<QSize> sizes;
        for (const int side : {16, 18, 22, 24, 32, 36, 44, 48, 64, 128})
            sizes += QSize(side, side);
        return sizes;
    }

    [[nodiscard]] QIconEngine* clone() const override {
        return new StatusIconEngine(m_image, m_drop);
    }

  private:
    StatusImage m_image;
    double m_drop;
};

} // namespace

void paintStatusImage(QPainter& painter, StatusImage image, double drop) {
    painter.save();
    lower(painter, drop);
    paint(painter, image);
    painter.restore();
}

QIcon statusIcon(StatusImage image, double drop) {
    return QIcon(new StatusIconEngine(image, drop));
}

} // namespace vorq
