#include "ui/reply/BlockLayout.h"

#include "rendering/InlineSpans.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using Kind = AssistantReplyDocument::Kind;
using Type = ReplyStyle::Type;

Qt::LayoutDirection directionOf(const QString& text) {
    return text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
}

// Code says nothing of the language of its line, unless there is nothing else.
Qt::LayoutDirection directionOf(const InlineSpans& line) {
    QString prose = line.text;
    for (const InlineSpans::Span& span : line.spans)
        if (span.isCode) prose.replace(span.start, span.length, QString(span.length, u' '));
    return directionOf(prose);
}

// Code is read from left to right. Apart from the line around it, its brackets stay where they are.
void isolateCode(InlineSpans& line) {
    qsizetype added = 0;
    for (InlineSpans::Span& span : line.spans) {
        span.start += added;
        if (!span.isCode) continue;
        line.text.insert(span.start + span.length, ReplyStyle::isolateEnd);
        line.text.insert(span.start, ReplyStyle::isolateStart);
        ++span.start;
        added += 2;
    }
}

TextFlow::Source inlineSource(const QString& text, const Type& type, const ReplyTheme& theme) {
    InlineSpans parsed = InlineSpans::parse(text);
    const Qt::LayoutDirection direction = directionOf(parsed);
    if (direction == Qt::RightToLeft) isolateCode(parsed);
    TextFlow::Source source;
    source.text = parsed.text;
    source.formats = ReplyStyle::formatsOf(parsed, type, theme);
    source.font = ReplyStyle::fontOf(type, theme.textScale);
    source.direction = direction;
    source.lineGap = type.lineGap;
    return source;
}

} // namespace

BlockLayout::BlockLayout(const Block& block, const ReplyTheme& theme)
    : m_kind(block.kind), m_theme(theme) {
    const Type type = ReplyStyle::typeOf(block.kind);
    switch (block.kind) {
    case Kind::Title:
    case Kind::Section:
        addText(AssistantReplyDocument::inlinePlain(block.text), type);
        break;
    case Kind::Body:
    case Kind::Quote:
        addText(block.text, type);
        break;
    case Kind::Bullets:
    case Kind::Numbered:
        addItems(block.items, block.kind == Kind::Numbered);
        break;
    case Kind::Code:
        addCode(block.text);
        break;
    case Kind::Table:
        addTable(block);
        break;
    case Kind::Divider:
        break;
    }
    const bool followsText = m_kind != Kind::Code && m_kind != Kind::Table;
    if (!m_pieces.empty() && followsText) m_direction = m_pieces.front().flow.direction();
}

void BlockLayout::addPiece(TextFlow::Source source, const Type& type, QChar separator) {
    if (!m_pieces.empty()) m_plainText += separator;
    Piece piece{TextFlow(source)};
    piece.start = m_plainText.size();
    piece.type = type;
    m_plainText += source.text;
    m_pieces.push_back(std::move(piece));
}

void BlockLayout::addText(const QString& text, const Type& type) {
    addPiece(inlineSource(text, type, m_theme), type, u'\n');
}

void BlockLayout::addItems(const QStringList& items, bool isNumbered) {
    const Type type = ReplyStyle::typeOf(m_kind);
    for (const QString& item : items) {
        addText(item, type);
        Piece& piece = m_pieces.back();
        piece.marker = isNumbered ? QString::number(m_pieces.size()) + u'.' : u"•"_s;
        piece.markerType = isNumbered ? ReplyStyle::numberMarker : ReplyStyle::bulletMarker;
    }
    if (!isNumbered || m_pieces.empty()) return;
    // From a hundred on a number is wider than its box.
    const QFontMetricsF metrics(ReplyStyle::fontOf(ReplyStyle::numberMarker, m_theme.textScale));
    m_numberColumn =
        std::max(m_numberColumn, std::ceil(metrics.horizontalAdvance(m_pieces.back().marker)));
}

void BlockLayout::addCode(const QString& text) {
    const Type type = ReplyStyle::typeOf(Kind::Code);
    TextFlow::Source source;
    source.text = text;
    source.text.replace(u'\n', QChar(QChar::LineSeparator));
    source.font = ReplyStyle::fontOf(type, m_theme.textScale);
    source.wraps = false;
    source.lineGap = type.lineGap;
    addPiece(std::move(source), type, u'\n');
}

void BlockLayout::addRow(const QStringList& cells, int row, const Type& type) {
    for (int column = 0; column < cells.size(); ++column) {
        TextFlow::Source source = inlineSource(cells[column], type, m_theme);
        source.side = m_direction;
        addPiece(std::move(source), type, column == 0 ? u'\n' : u'\t');
        m_pieces.back().row = row;
        m_pieces.back().column = column;
    }
    m_columns = std::max(m_columns, static_cast<int>(cells.size()));
}

// All cells of a column stand under its header, whatever they say.
void BlockLayout::addTable(const Block& block) {
    m_direction = directionOf(block.header.join(u' '));
    addRow(block.header, 0, ReplyStyle::tableHeader);
    int row = 0;
    for (const QStringList& cells : block.rows)
        addRow(cells, ++row, ReplyStyle::typeOf(Kind::Table));
}

double BlockLayout::indent() const {
    if (m_kind == Kind::Bullets) return ReplyStyle::bulletColumn;
    if (m_kind == Kind::Numbered) return m_numberColumn + ReplyStyle::numberGap;
    if (m_kind == Kind::Quote) return ReplyStyle::quoteBarWidth + ReplyStyle::quoteGap;
    if (m_kind == Kind::Code) return ReplyStyle::platePadding;
    return 0;
}

double BlockLayout::naturalWidth() const {
    double widest = 0;
    for (const Piece& piece : m_pieces)
        widest = std::max(widest, piece.flow.naturalWidth());
    return m_kind == Kind::Table ? m_width : widest + indent();
}

bool BlockLayout::layOutMore(double width) {
    if (width != m_width) {
        m_width = width;
        m_setPieces = 0;
        m_height = 0;
        m_scroll = 0;
        m_isDone = false;
    }
    if (m_isDone) return true;
    if (m_kind == Kind::Divider) m_height = ReplyStyle::ruleHeight;
    m_isDone = m_kind == Kind::Table ? layOutTable(width) : layOutStack(width);
    return m_isDone;
}

bool BlockLayout::layOutStack(double width) {
    const double padding = m_kind == Kind::Code ? ReplyStyle::platePadding : 0;
    if (m_setPieces < m_pieces.size()) {
        Piece& piece = m_pieces[m_setPieces];
        double y = padding;
        if (m_setPieces > 0) {
            const Piece& above = m_pieces[m_setPieces - 1];
            y = above.at.y() + above.flow.height() + ReplyStyle::itemGap;
        }
        piece.at.setY(y);
        const bool isMirrored = piece.flow.direction() == Qt::RightToLeft && m_kind != Kind::Code;
        piece.at.setX(isMirrored ? 0 : indent());
        const double room = std::max(1.0, width - indent() - padding);
        if (piece.flow.layOutMore(room)) ++m_setPieces;
        m_height = piece.at.y() + piece.flow.height() + padding;
    }
    return m_setPieces == m_pieces.size();
}

// A table's columns hang together, so it is set as one; its cells are short.
bool BlockLayout::layOutTable(double width) {
    constexpr double unbounded = 1e5;
    for (Piece& piece : m_pieces)
        while (!piece.flow.layOutMore(unbounded)) {
        }
    const double plateRoom = std::max(1.0, width - 2 * ReplyStyle::platePadding);
    const std::vector<double> columns = columnWidths(columnNeeds(), plateRoom);
    for (Piece& piece : m_pieces) {
        const double room = std::max(1.0, columns[static_cast<std::size_t>(piece.column)] -
                                              ReplyStyle::tableColumnGap);
        while (!piece.flow.layOutMore(room)) {
        }
    }
    placeRows(columns);
    return true;
}

// For cells that are set on one line each.
std::vector<ColumnNeed> BlockLayout::columnNeeds() const {
    std::vector<ColumnNeed> needs(static_cast<std::size_t>(m_columns));
    const auto withGap = [](double width) { return std::ceil(width) + ReplyStyle::tableColumnGap; };
    constexpr double bearing = 1; // letters may reach that far beyond their word
    for (const Piece& piece : m_pieces) {
        ColumnNeed& need = needs[static_cast<std::size_t>(piece.column)];
        const double natural = withGap(piece.flow.naturalWidth());
        need.natural = std::max(need.natural, natural);
        if (natural <= need.word) continue;
        const double word = withGap(piece.flow.widestWord() + bearing);
        need.word = std::max(need.word, std::min(word, natural));
    }
    return needs;
}

void BlockLayout::placeRows(const std::vector<double>& columns) {
    double y = ReplyStyle::platePadding;
    std::size_t first = 0;
    while (first < m_pieces.size()) {
        const int row = m_pieces[first].row;
        double tallest = 0;
        std::size_t next = first;
        double x = ReplyStyle::platePadding;
        for (; next < m_pieces.size() && m_pieces[next].row == row; ++next) {
            const double column = columns[static_cast<std::size_t>(m_pieces[next].column)];
            const bool isMirrored = m_direction == Qt::RightToLeft;
            const double left = isMirrored ? m_width - x - column + ReplyStyle::tableColumnGap : x;
            m_pieces[next].at = {left, y};
            x += column;
            tallest = std::max(tallest, m_pieces[next].flow.height());
        }
        y += tallest + ReplyStyle::tableRowGap;
        if (row == 0) {
            m_headerRule = y;
            y += ReplyStyle::ruleHeight + ReplyStyle::tableRowGap;
        }
        first = next;
    }
    m_height = y - ReplyStyle::tableRowGap + ReplyStyle::platePadding;
}

bool BlockLayout::scrollBy(double dx) {
    if (m_kind != Kind::Code || m_pieces.empty()) return false;
    const double next = std::clamp(m_scroll + dx, 0.0, overflow());
    if (next == m_scroll) return overflow() > 0;
    m_scroll = next;
    return true;
}

bool BlockLayout::scrollTo(qsizetype position) {
    const QRectF caret = cursorRect(position);
    const double left = ReplyStyle::platePadding;
    const double right = m_width - ReplyStyle::platePadding;
    const double dx = std::max(caret.left() - right, 0.0) - std::max(left - caret.left(), 0.0);
    return m_isDone && dx != 0 && scrollBy(dx);
}

// By how much code is wider than its plate.
double BlockLayout::overflow() const {
    const double room = m_width - 2 * ReplyStyle::platePadding;
    return std::max(0.0, m_pieces.front().flow.naturalWidth() - room);
}

QPointF BlockLayout::originOf(const Piece& piece) const {
    return m_kind == Kind::Code ? piece.at - QPointF(m_scroll, 0) : piece.at;
}

const BlockLayout::Piece* BlockLayout::pieceAt(QPointF point) const {
    const Piece* nearest = nullptr;
    for (const Piece& piece : m_pieces) {
        if (nearest && piece.at.y() > point.y()) break;
        const bool isFurther =
            nearest && piece.row == nearest->row && piece.column > 0 &&
            (m_direction == Qt::RightToLeft ? piece.at.x() + piece.flow.naturalWidth() < point.x()
                                            : piece.at.x() > point.x());
        if (!isFurther) nearest = &piece;
    }
    return nearest;
}

const BlockLayout::Piece* BlockLayout::pieceOf(qsizetype position) const {
    if (m_pieces.empty()) return nullptr;
    const auto after = std::ranges::upper_bound(m_pieces, position, {}, &Piece::start);
    return after == m_pieces.begin() ? &m_pieces.front() : &*std::prev(after);
}

qsizetype BlockLayout::positionAt(QPointF point) const {
    const Piece* piece = pieceAt(point);
    return piece ? piece->start + piece->flow.positionAt(point - originOf(*piece)) : 0;
}

qsizetype BlockLayout::characterAt(QPointF point) const {
    const Piece* piece = pieceAt(point);
    return piece ? piece->start + piece->flow.characterAt(point - originOf(*piece)) : 0;
}

bool BlockLayout::covers(QPointF point, BlockRange range) const {
    const Piece* piece = pieceAt(point);
    return piece && piece->flow.covers(point - originOf(*piece), range.from - piece->start,
                                       range.to - piece->start);
}

QRectF BlockLayout::firstLineRect(BlockRange range) const {
    for (const Piece& piece : m_pieces) {
        const qsizetype from = std::max<qsizetype>(0, range.from - piece.start);
        const qsizetype to = std::min(piece.flow.text().size(), range.to - piece.start);
        if (from < to) return piece.flow.firstLineRect(from, to).translated(originOf(piece));
    }
    return {};
}

QRectF BlockLayout::cursorRect(qsizetype position) const {
    const Piece* piece = pieceOf(position);
    if (!piece) return {};
    return piece->flow.cursorRect(position - piece->start).translated(originOf(*piece));
}

QString BlockLayout::linkAt(QPointF point) const {
    const Piece* piece = pieceAt(point);
    return piece ? piece->flow.linkAt(point - originOf(*piece)) : QString();
}

QString BlockLayout::linkAt(qsizetype position) const {
    const Piece* piece = pieceOf(position);
    if (!piece) return {};
    const qsizetype within = position - piece->start;
    for (const TextFlow::Link& link : piece->flow.links())
        if (link.from <= within && within < link.to) return link.address;
    return {};
}

Qt::LayoutDirection BlockLayout::directionAt(qsizetype position) const {
    const Piece* piece = pieceOf(position);
    return piece ? piece->flow.direction() : Qt::LeftToRight;
}

} // namespace vorq
