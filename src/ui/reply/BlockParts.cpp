// What a block consists of, for those who are told of it part by part.

#include "ui/reply/BlockLayout.h"

#include <algorithm>
#include <iterator>

namespace vorq {

BlockLayout::Part BlockLayout::part(int index) const {
    const Piece& piece = m_pieces[static_cast<std::size_t>(index)];
    Part part;
    part.range = {piece.start, piece.start + piece.flow.text().size()};
    part.marker = piece.marker;
    part.row = piece.row;
    part.column = piece.column;
    part.place = m_kind == Kind::Table
                     ? QRectF(piece.at, QSizeF(piece.flow.width(), piece.flow.height()))
                 : m_kind == Kind::Code ? QRectF(0, 0, m_width, m_height)
                                        : QRectF(0, piece.at.y(), m_width, piece.flow.height());
    return part;
}

int BlockLayout::partAt(int row, int column) const {
    const auto isBefore = [row, column](const Piece& piece) {
        return piece.row < row || (piece.row == row && piece.column < column);
    };
    const auto found = std::ranges::partition_point(m_pieces, isBefore);
    const bool isThere = found != m_pieces.end() && found->row == row && found->column == column;
    return isThere ? static_cast<int>(std::distance(m_pieces.begin(), found)) : -1;
}

int BlockLayout::partOf(qsizetype position) const {
    const Piece* piece = pieceOf(position);
    return piece ? static_cast<int>(piece - m_pieces.data()) : -1;
}

BlockRange BlockLayout::lineAt(qsizetype position) const {
    const Piece* piece = pieceOf(position);
    if (!piece) return {};
    const auto [from, to] = piece->flow.lineOf(position - piece->start);
    // What parts two texts ends the line of the first.
    const bool endsText = to == piece->flow.text().size();
    const bool hasNext = piece != &m_pieces.back();
    return {piece->start + from, piece->start + to + (endsText && hasNext ? 1 : 0)};
}

QList<BlockLayout::Link> BlockLayout::links(int part) const {
    const Piece& piece = m_pieces[static_cast<std::size_t>(part)];
    QList<Link> links;
    for (const TextFlow::Link& link : piece.flow.links())
        links += {{piece.start + link.from, piece.start + link.to}, link.address};
    return links;
}

} // namespace vorq
