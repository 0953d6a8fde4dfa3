#include "ui/native/IconPainter.h"

#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

namespace vorq {
namespace {

// Few icons have any, and the first use of a pattern takes half a megabyte.
QString takeCutOuts(QString& markup) {
    if (!markup.contains(QLatin1StringView("stroke='#FFFFFF'"))) return {};
    static const QRegularExpression cutOut(QStringLiteral("<[a-z]+ [^>]*stroke='#FFFFFF'[^>]*/>"));
    QString found;
    for (auto it = cutOut.globalMatch(markup); it.hasNext();)
        found += it.next().captured(0);
    markup.remove(cutOut);
    return found;
}

} // namespace

IconPainter::IconPainter(QQuickItem* parent) : PaintedItem(parent) {
    setAntialiasing(true);
    for (const auto signal : {&IconPainter::markupChanged, &IconPainter::colorChanged,
                              &IconPainter::weightChanged, &IconPainter::gridChanged})
        connect(this, signal, this, [this] { update(); });
}

QByteArray IconPainter::document(const QString& body) const {
    return QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 %4 %4'>"
                          "<g fill='none' stroke='%1' stroke-width='%2' stroke-linecap='round' "
                          "stroke-linejoin='round'>%3</g></svg>")
        .arg(m_color.name(QColor::HexRgb))
        .arg(m_weight)
        .arg(body)
        .arg(m_grid)
        .toUtf8();
}

void IconPainter::render(const QString& body, QPainter& painter, const QRectF& into) const {
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(document(body)).render(&painter, into);
}

// Into a picture first: cut-outs take away what is drawn, and where strokes cross a translucent
// colour must not double.
void IconPainter::paint(QPainter* painter) {
    if (m_markup.isEmpty() || width() <= 0 || height() <= 0) return;
    QString body = m_markup;
    body.replace(QLatin1String("currentColor"), m_color.name(QColor::HexRgb));
    const QString cutOuts = takeCutOuts(body);
    const double scale = std::max(1.0, std::abs(painter->transform().m11()));
    const QSize size(static_cast<int>(std::ceil(width() * scale)),
                     static_cast<int>(std::ceil(height() * scale)));
    const QRectF whole(0, 0, width() * scale, height() * scale);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter drawing(&image);
    render(body, drawing, whole);
    if (!cutOuts.isEmpty()) {
        drawing.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        render(cutOuts, drawing, whole);
    }
    drawing.end();
    painter->setOpacity(m_color.alphaF());
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(QRectF(0, 0, image.width() / scale, image.height() / scale), image);
}

} // namespace vorq
