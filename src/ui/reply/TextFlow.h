#pragma once

#include <QFont>
#include <QList>
#include <QRectF>
#include <QString>
#include <QTextLayout>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace vorq {

/// A text set in lines, of any length: it is shaped in pieces, each of which begins where a line of
/// the one before ended, so that a paragraph of a million characters does not hold up the program.
/// Positions count UTF-16 units; geometry is in logical pixels from the top left. Main thread only.
class TextFlow {
  public:
    struct Source {
        QString text;
        QList<QTextLayout::FormatRange> formats;
        QFont font;
        Qt::LayoutDirection direction = Qt::LeftToRight;
        /// Lines stand at its beginning; without it, at that of the direction of the text.
        std::optional<Qt::LayoutDirection> side;
        /// Without it a line is as long as it is, up to the length of a piece.
        bool wraps = true;
        double lineGap = 0;
    };

    explicit TextFlow(Source source) : m_source(std::move(source)) {}
    TextFlow(const TextFlow&) = delete;
    TextFlow& operator=(const TextFlow&) = delete;
    TextFlow(TextFlow&&) noexcept = default;
    TextFlow& operator=(TextFlow&&) noexcept = default;
    ~TextFlow() = default;

    /// Begins anew for this width, or goes on; each call sets at most one piece. True once all of
    /// the text is set.
    bool layOutMore(double width);

    [[nodiscard]] bool isDone() const {
        return m_next >= m_source.text.size() && !m_pieces.empty();
    }
    [[nodiscard]] double height() const { return m_height; }
    /// Of the longest line.
    [[nodiscard]] double naturalWidth() const { return m_naturalWidth; }
    /// Of what is not broken where there is room for it. Measured anew with each call.
    [[nodiscard]] double widestWord() const;
    /// The width that it is set for; negative before.
    [[nodiscard]] double width() const { return m_width; }
    [[nodiscard]] const QString& text() const { return m_source.text; }
    [[nodiscard]] Qt::LayoutDirection direction() const { return m_source.direction; }
    [[nodiscard]] double ascent() const;

    /// The position nearest to a point.
    [[nodiscard]] qsizetype positionAt(QPointF point) const;

    /// The character under a point, or else the nearest in its line.
    [[nodiscard]] qsizetype characterAt(QPointF point) const;

    /// Whether some glyph of the range is under the point.
    [[nodiscard]] bool covers(QPointF point, qsizetype from, qsizetype to) const;

    /// The first line of the range from one position to another.
    [[nodiscard]] QRectF firstLineRect(qsizetype from, qsizetype to) const;

    [[nodiscard]] QRectF cursorRect(qsizetype position) const;

    /// The address under the point; empty for none.
    [[nodiscard]] QString linkAt(QPointF point) const;

    /// The line that a position is in, from its first position to that of the next line.
    [[nodiscard]] std::pair<qsizetype, qsizetype> lineOf(qsizetype position) const;

    struct Link {
        qsizetype from = 0;
        qsizetype to = 0;
        QString address;
    };
    /// In the order of the text.
    [[nodiscard]] QList<Link> links() const;

    struct Selection {
        qsizetype from = 0;
        qsizetype to = 0;
        QColor background;
    };
    void draw(QPainter& painter, QPointF at, const QRectF& clip,
              const std::optional<Selection>& selection) const;

  private:
    struct Piece {
        qsizetype start = 0;
        qsizetype length = 0;
        double y = 0;
        double height = 0;
        std::unique_ptr<QTextLayout> layout;
    };

    void restart(double width);
    void addPiece();
    [[nodiscard]] qsizetype pieceEnd() const;
    [[nodiscard]] std::unique_ptr<QTextLayout> shaped(qsizetype start, qsizetype end,
                                                      QTextOption::WrapMode wrapping) const;
    [[nodiscard]] QList<QTextLayout::FormatRange> formatsWithin(qsizetype start,
                                                                qsizetype end) const;
    [[nodiscard]] const Piece* pieceAt(double y) const;
    [[nodiscard]] const Piece* pieceOf(qsizetype position) const;

    Source m_source;
    std::vector<Piece> m_pieces;
    double m_width = -1;
    double m_height = 0;
    double m_naturalWidth = 0;
    qsizetype m_next = 0; // what is not set yet
};

} // namespace vorq
