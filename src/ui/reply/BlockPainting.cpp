// How a block is drawn.

#include "ui/native/SquirclePath.h"
#include "ui/reply/BlockLayout.h"

#include <QFontMetricsF>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace vorq {
namespace {

constexpr double plateSmoothing = 0.6;

} // namespace

QColor BlockLayout::inkAt(double opacity) const {
    QColor color = m_theme.ink;
    color.setAlphaF(static_cast<float>(opacity) * color.alphaF());
    return color;
}

// Of what is thin, or not to be missed.
QColor BlockLayout::ruleInk(double opacity) const {
    return inkAt(m_theme.hasHighContrast ? 1 : opacity);
}

void BlockLayout::draw(QPainter& painter, const QRectF& clip, BlockRange selection) const {
    drawPlate(painter);
    if (m_kind == Kind::Code)
        drawCode(painter, clip, selection);
    else
        drawPieces(painter, clip, selection);
}

void BlockLayout::drawPieces(QPainter& painter, const QRectF& clip, BlockRange selection) const {
    for (const Piece& piece : m_pieces) {
        if (piece.at.y() > clip.bottom()) break;
        if (piece.at.y() + piece.flow.height() < clip.top()) continue;
        drawPiece(painter, piece, clip, selection);
        drawMarker(painter, piece);
    }
}

// Lines that are too long fade out. The plate under them must not, so they are drawn apart from it.
void BlockLayout::drawCode(QPainter& painter, const QRectF& clip, BlockRange selection) const {
    const QRectF room(ReplyStyle::platePadding, 0, m_width - 2 * ReplyStyle::platePadding,
                      m_height);
    if (m_pieces.empty() || overflow() <= 0) return drawPieces(painter, clip, selection);
    const QTransform toDevice = painter.transform();
    const QRect pixels = toDevice.mapRect(room.intersected(clip)).toAlignedRect();
    if (pixels.isEmpty()) return;
    QImage lines(pixels.size(), QImage::Format_ARGB32_Premultiplied);
    lines.fill(Qt::transparent);
    QPainter drawing(&lines);
    drawing.setRenderHints(painter.renderHints());
    drawing.setTransform(toDevice * QTransform::fromTranslate(-pixels.left(), -pixels.top()));
    drawing.setClipRect(room);
    drawPieces(drawing, clip, selection);
    fadeEnds(drawing, room);
    drawing.end();
    painter.save();
    painter.resetTransform();
    painter.drawImage(pixels.topLeft(), lines);
    painter.restore();
}

void BlockLayout::fadeEnds(QPainter& painter, const QRectF& room) const {
    const auto fade = [&](double from, double to) {
        QLinearGradient gradient(from, 0, to, 0);
        gradient.setColorAt(0, Qt::transparent);
        gradient.setColorAt(1, Qt::black);
        painter.fillRect(QRectF(QPointF(from, room.top()), QPointF(to, room.bottom())).normalized(),
                         gradient);
    };
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    if (m_scroll > 0) fade(room.left(), room.left() + ReplyStyle::codeFade);
    if (m_scroll < overflow()) fade(room.right(), room.right() - ReplyStyle::codeFade);
}

void BlockLayout::drawPlate(QPainter& painter) const {
    const QRectF whole(0, 0, m_width, m_height);
    if (m_kind == Kind::Code || m_kind == Kind::Table) {
        const double opacity =
            m_kind == Kind::Code ? ReplyStyle::codePlateOpacity : ReplyStyle::tablePlateOpacity;
        painter.fillPath(squirclePath(whole, ReplyStyle::plateRadius, plateSmoothing),
                         inkAt(opacity));
        if (m_theme.hasHighContrast) drawPlateEdge(painter, whole);
    }
    if (m_kind == Kind::Table)
        painter.fillRect(QRectF(ReplyStyle::platePadding, m_headerRule,
                                m_width - 2 * ReplyStyle::platePadding, ReplyStyle::ruleHeight),
                         ruleInk(ReplyStyle::tableRuleOpacity));
    if (m_kind == Kind::Divider) painter.fillRect(whole, ruleInk(ReplyStyle::dividerOpacity));
    if (m_kind == Kind::Quote) {
        const double x = m_direction == Qt::RightToLeft ? m_width - ReplyStyle::quoteBarWidth : 0;
        QPainterPath bar;
        bar.addRoundedRect(QRectF(x, 0, ReplyStyle::quoteBarWidth, m_height),
                           ReplyStyle::quoteBarRadius, ReplyStyle::quoteBarRadius);
        painter.fillPath(bar, ruleInk(ReplyStyle::quoteBarOpacity));
    }
}

void BlockLayout::drawPlateEdge(QPainter& painter, const QRectF& plate) const {
    constexpr double half = ReplyStyle::ruleHeight / 2;
    painter.strokePath(squirclePath(plate.adjusted(half, half, -half, -half),
                                    ReplyStyle::plateRadius, plateSmoothing),
                       QPen(m_theme.ink, ReplyStyle::ruleHeight));
}

void BlockLayout::drawPiece(QPainter& painter, const Piece& piece, const QRectF& clip,
                            BlockRange selection) const {
    std::optional<TextFlow::Selection> chosen;
    if (!selection.isEmpty())
        chosen = TextFlow::Selection{selection.from - piece.start, selection.to - piece.start,
                                     m_theme.selection};
    painter.setPen(ruleInk(piece.type.opacity));
    piece.flow.draw(painter, originOf(piece), clip, chosen);
}

void BlockLayout::drawMarker(QPainter& painter, const Piece& piece) const {
    if (piece.marker.isEmpty()) return;
    const QFont font = ReplyStyle::fontOf(piece.markerType, m_theme.textScale);
    const QFontMetricsF metrics(font);
    const bool isMirrored = piece.flow.direction() == Qt::RightToLeft;
    const double x = isMirrored ? m_width - metrics.horizontalAdvance(piece.marker) : 0;
    painter.setFont(font);
    painter.setPen(ruleInk(piece.markerType.opacity));
    painter.setLayoutDirection(piece.flow.direction());
    painter.drawText(QPointF(x, piece.at.y() + piece.flow.ascent()), piece.marker);
}

} // namespace vorq
