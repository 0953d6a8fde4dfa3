// How a block is drawn.

#include "ui/native/SquirclePath.h"
#include "ui/reply/BlockLayout.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

namespace vorq {
namespace {

constexpr double plateSmoothing = 0.6;

} // namespace

QColor BlockLayout::inkAt(double opacity) const {
    QColor color = m_colors.ink;
    color.setAlphaF(static_cast<float>(opacity) * color.alphaF());
    return color;
}

void BlockLayout::draw(QPainter& painter, const QRectF& clip, BlockRange selection) const {
    drawPlate(painter);
    painter.save();
    if (m_kind == Kind::Code)
        painter.setClipRect(
            QRectF(ReplyStyle::platePadding, 0, m_width - 2 * ReplyStyle::platePadding, m_height),
            Qt::IntersectClip);
    for (const Piece& piece : m_pieces) {
        if (piece.at.y() > clip.bottom()) break;
        if (piece.at.y() + piece.flow.height() < clip.top()) continue;
        drawPiece(painter, piece, clip, selection);
        drawMarker(painter, piece);
    }
    painter.restore();
}

void BlockLayout::drawPlate(QPainter& painter) const {
    const QRectF whole(0, 0, m_width, m_height);
    if (m_kind == Kind::Code || m_kind == Kind::Table) {
        const double opacity =
            m_kind == Kind::Code ? ReplyStyle::codePlateOpacity : ReplyStyle::tablePlateOpacity;
        painter.fillPath(squirclePath(whole, ReplyStyle::plateRadius, plateSmoothing),
                         inkAt(opacity));
    }
    if (m_kind == Kind::Table)
        painter.fillRect(QRectF(ReplyStyle::platePadding, m_headerRule,
                                m_width - 2 * ReplyStyle::platePadding, ReplyStyle::ruleHeight),
                         inkAt(ReplyStyle::tableRuleOpacity));
    if (m_kind == Kind::Divider) painter.fillRect(whole, inkAt(ReplyStyle::dividerOpacity));
    if (m_kind == Kind::Quote) {
        const double x = m_direction == Qt::RightToLeft ? m_width - ReplyStyle::quoteBarWidth : 0;
        QPainterPath bar;
        bar.addRoundedRect(QRectF(x, 0, ReplyStyle::quoteBarWidth, m_height),
                           ReplyStyle::quoteBarRadius, ReplyStyle::quoteBarRadius);
        painter.fillPath(bar, inkAt(ReplyStyle::quoteBarOpacity));
    }
}

void BlockLayout::drawPiece(QPainter& painter, const Piece& piece, const QRectF& clip,
                            BlockRange selection) const {
    std::optional<TextFlow::Selection> chosen;
    if (!selection.isEmpty())
        chosen = TextFlow::Selection{selection.from - piece.start, selection.to - piece.start,
                                     m_colors.selection};
    painter.setPen(inkAt(piece.type.opacity));
    piece.flow.draw(painter, originOf(piece), clip, chosen);
}

void BlockLayout::drawMarker(QPainter& painter, const Piece& piece) const {
    if (piece.marker.isEmpty()) return;
    const QFont font = ReplyStyle::fontOf(piece.markerType);
    const QFontMetricsF metrics(font);
    const bool isMirrored = piece.flow.direction() == Qt::RightToLeft;
    const double x = isMirrored ? m_width - metrics.horizontalAdvance(piece.marker) : 0;
    painter.setFont(font);
    painter.setPen(inkAt(piece.markerType.opacity));
    painter.drawText(QPointF(x, piece.at.y() + piece.flow.ascent()), piece.marker);
}

} // namespace vorq
