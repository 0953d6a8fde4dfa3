#include "ui/reply/TextFlow.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace vorq {
namespace {

constexpr qsizetype pieceLength = 4096;
constexpr double unboundedWidth = 1e6;
constexpr int tabCharacters = 4;

// Lays the lines of a piece under each other; gives their height and widest line.
struct Lines {
    double height = 0;
    double widest = 0;
};

Lines setLines(QTextLayout& layout, double width, double gap) {
    Lines lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, lines.height});
        lines.height += std::ceil(line.height()) + gap;
        lines.widest = std::max(lines.widest, line.naturalTextWidth());
    }
    layout.endLayout();
    return lines;
}

} // namespace

double TextFlow::ascent() const {
    return m_pieces.empty() ? QFontMetricsF(m_source.font).ascent()
                            : m_pieces.front().layout->lineAt(0).ascent();
}

void TextFlow::restart(double width) {
    m_width = width;
    m_pieces.clear();
    m_next = 0;
    m_height = 0;
    m_naturalWidth = 0;
}

bool TextFlow::layOutMore(double width) {
    if (width != m_width) restart(width);
    if (!isDone()) addPiece();
    return isDone();
}

qsizetype TextFlow::pieceEnd() const {
    const QString& text = m_source.text;
    qsizetype end = std::min(m_next + pieceLength, text.size());
    if (end == text.size()) return end;
    if (!m_source.wraps) {
        const qsizetype lineBreak = text.lastIndexOf(QChar(QChar::LineSeparator), end - 1);
        if (lineBreak >= m_next) return lineBreak + 1;
    }
    if (text[end].isLowSurrogate()) --end;
    return end;
}

QList<QTextLayout::FormatRange> TextFlow::formatsWithin(qsizetype start, qsizetype end) const {
    QList<QTextLayout::FormatRange> formats;
    for (QTextLayout::FormatRange range : m_source.formats) {
        const qsizetype from = std::max<qsizetype>(range.start, start);
        const qsizetype to = std::min<qsizetype>(range.start + range.length, end);
        if (from >= to) continue;
        range.start = static_cast<int>(from - start);
        range.length = static_cast<int>(to - from);
        formats += range;
    }
    return formats;
}

std::unique_ptr<QTextLayout> TextFlow::shaped(qsizetype start, qsizetype end,
                                              QTextOption::WrapMode wrapping) const {
    QString text = m_source.text.mid(start, end - start);
    // The break that ends a piece would add an empty line below it.
    if (end < m_source.text.size() && text.endsWith(QChar(QChar::LineSeparator))) text.chop(1);
    auto layout = std::make_unique<QTextLayout>(text, m_source.font);
    QTextOption option;
    option.setTextDirection(m_source.direction);
    const bool isAtRight = m_source.side.value_or(m_source.direction) == Qt::RightToLeft;
    option.setAlignment(Qt::AlignAbsolute | (isAtRight ? Qt::AlignRight : Qt::AlignLeft));
    option.setWrapMode(wrapping);
    option.setUseDesignMetrics(true);
    option.setTabStopDistance(tabCharacters * QFontMetricsF(m_source.font).horizontalAdvance(u'0'));
    layout->setTextOption(option);
    layout->setFormats(formatsWithin(start, end));
    layout->setCacheEnabled(true);
    return layout;
}

void TextFlow::addPiece() {
    const double lineWidth = m_source.wraps ? m_width : unboundedWidth;
    const auto wrapping =
        m_source.wraps ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap;
    qsizetype end = pieceEnd();
    std::unique_ptr<QTextLayout> layout = shaped(m_next, end, wrapping);
    Lines lines = setLines(*layout, lineWidth, m_source.lineGap);
    if (m_source.wraps && end < m_source.text.size() && layout->lineCount() > 1) {
        // The last line goes on in the next piece.
        end = m_next + layout->lineAt(layout->lineCount() - 1).textStart();
        layout = shaped(m_next, end, wrapping);
        lines = setLines(*layout, lineWidth, m_source.lineGap);
    }
    Piece piece;
    piece.start = m_next;
    piece.length = end - m_next;
    piece.y = m_pieces.empty() ? 0 : m_height + m_source.lineGap;
    piece.height = lines.height - m_source.lineGap;
    piece.layout = std::move(layout);
    m_height = piece.y + piece.height;
    m_naturalWidth = std::max(m_naturalWidth, lines.widest);
    m_next = end;
    m_pieces.push_back(std::move(piece));
}

double TextFlow::widestWord() const {
    double widest = 0;
    for (const Piece& piece : m_pieces) {
        // Where words may be broken, the layout does not tell of them.
        const auto layout = shaped(piece.start, piece.start + piece.length, QTextOption::WordWrap);
        setLines(*layout, unboundedWidth, 0);
        widest = std::max(widest, layout->minimumWidth());
    }
    return widest;
}

const TextFlow::Piece* TextFlow::pieceAt(double y) const {
    if (m_pieces.empty()) return nullptr;
    const auto after = std::ranges::upper_bound(m_pieces, y, {}, &Piece::y);
    return after == m_pieces.begin() ? &m_pieces.front() : &*std::prev(after);
}

const TextFlow::Piece* TextFlow::pieceOf(qsizetype position) const {
    if (m_pieces.empty()) return nullptr;
    const auto after = std::ranges::upper_bound(m_pieces, position, {}, &Piece::start);
    return after == m_pieces.begin() ? &m_pieces.front() : &*std::prev(after);
}

namespace {

QTextLine lineAt(const QTextLayout& layout, double y) {
    QTextLine found;
    for (int i = 0; i < layout.lineCount(); ++i) {
        const QTextLine line = layout.lineAt(i);
        if (i > 0 && line.y() > y) break;
        found = line;
    }
    return found;
}

} // namespace

qsizetype TextFlow::positionAt(QPointF point) const {
    const Piece* piece = pieceAt(point.y());
    if (!piece) return 0;
    const QTextLine line = lineAt(*piece->layout, point.y() - piece->y);
    if (!line.isValid()) return piece->start;
    return piece->start + line.xToCursor(point.x());
}

// What a wrapped line ends with is not seen, so it is not what a point behind the line means.
qsizetype TextFlow::characterAt(QPointF point) const {
    const Piece* piece = pieceAt(point.y());
    if (!piece) return 0;
    const QTextLine line = lineAt(*piece->layout, point.y() - piece->y);
    if (!line.isValid()) return piece->start;
    const QString text = piece->layout->text();
    int last = line.textStart() + std::max(0, line.textLength() - 1);
    while (last > line.textStart() && text.at(last).isSpace())
        --last;
    return piece->start + std::min(line.xToCursor(point.x(), QTextLine::CursorOnCharacter), last);
}

QRectF TextFlow::cursorRect(qsizetype position) const {
    const Piece* piece = pieceOf(position);
    if (!piece) return {};
    const int within = static_cast<int>(std::min(position - piece->start, piece->length));
    const QTextLine line = piece->layout->lineForTextPosition(within);
    if (!line.isValid()) return {};
    return {line.cursorToX(within), piece->y + line.y(), 1, line.height()};
}

QRectF TextFlow::firstLineRect(qsizetype from, qsizetype to) const {
    const Piece* piece = pieceOf(from);
    if (!piece || from >= to) return {};
    const int first = static_cast<int>(from - piece->start);
    const QTextLine line = piece->layout->lineForTextPosition(first);
    if (!line.isValid()) return {};
    const int last = static_cast<int>(
        std::min<qsizetype>(to - piece->start, line.textStart() + line.textLength()));
    const double a = line.cursorToX(first);
    const double b = line.cursorToX(last);
    return {std::min(a, b), piece->y + line.y(), std::abs(b - a), line.height()};
}

bool TextFlow::covers(QPointF point, qsizetype from, qsizetype to) const {
    const Piece* piece = pieceAt(point.y());
    if (!piece || from >= to) return false;
    const QTextLine line = lineAt(*piece->layout, point.y() - piece->y);
    if (!line.isValid() || !line.naturalTextRect().translated(0, piece->y).contains(point))
        return false;
    const qsizetype position =
        piece->start + line.xToCursor(point.x(), QTextLine::CursorOnCharacter);
    return position >= from && position < to;
}

QString TextFlow::linkAt(QPointF point) const {
    for (const QTextLayout::FormatRange& range : m_source.formats) {
        if (range.format.isAnchor() && covers(point, range.start, range.start + range.length))
            return range.format.anchorHref();
    }
    return {};
}

std::pair<qsizetype, qsizetype> TextFlow::lineOf(qsizetype position) const {
    const Piece* piece = pieceOf(position);
    if (!piece) return {0, m_source.text.size()};
    const QTextLayout& layout = *piece->layout;
    const auto within =
        static_cast<int>(std::min<qsizetype>(position - piece->start, layout.text().size()));
    const QTextLine line = layout.lineForTextPosition(within);
    if (!line.isValid()) return {piece->start, piece->start + piece->length};
    const bool isLast = line.lineNumber() + 1 == layout.lineCount();
    return {piece->start + line.textStart(),
            piece->start + (isLast ? piece->length
                                   : static_cast<qsizetype>(line.textStart() + line.textLength()))};
}

QList<TextFlow::Link> TextFlow::links() const {
    QList<Link> links;
    for (const QTextLayout::FormatRange& range : m_source.formats) {
        if (!range.format.isAnchor()) continue;
        const qsizetype to = range.start + range.length;
        const QString address = range.format.anchorHref();
        // A link with words of another weight is several runs.
        if (!links.isEmpty() && links.back().to == range.start && links.back().address == address)
            links.back().to = to;
        else
            links += {range.start, to, address};
    }
    return links;
}

void TextFlow::draw(QPainter& painter, QPointF at, const QRectF& clip,
                    const std::optional<Selection>& selection) const {
    for (const Piece& piece : m_pieces) {
        const double top = at.y() + piece.y;
        if (top > clip.bottom()) break;
        if (top + piece.height < clip.top()) continue;
        QList<QTextLayout::FormatRange> chosen;
        if (selection && selection->from < piece.start + piece.length &&
            selection->to > piece.start) {
            QTextLayout::FormatRange range;
            range.start = static_cast<int>(std::max<qsizetype>(0, selection->from - piece.start));
            range.length =
                static_cast<int>(std::min(selection->to - piece.start, piece.length)) - range.start;
            range.format.setBackground(selection->background);
            chosen += range;
        }
        piece.layout->draw(&painter, {at.x(), top}, chosen, clip);
    }
}

} // namespace vorq
