#pragma once

#include "rendering/AssistantReplyDocument.h"
#include "ui/reply/ColumnWidths.h"
#include "ui/reply/ReplyStyle.h"
#include "ui/reply/TextFlow.h"

#include <QPointF>
#include <QRectF>
#include <QString>

#include <vector>

class QPainter;

namespace vorq {

/// A run of the text of one block; from == to for none. Positions count UTF-16 units.
struct BlockRange {
    qsizetype from = 0;
    qsizetype to = 0;

    [[nodiscard]] bool isEmpty() const { return from >= to; }
};

/// One block of a reply, set for a width: its texts, markers, plates and rules. What it says as one
/// text are its pieces, one a line, the cells of a table row parted by tabs. Geometry is in logical
/// pixels from its top left. Main thread only.
class BlockLayout {
  public:
    using Block = AssistantReplyDocument::Block;
    using Kind = AssistantReplyDocument::Kind;

    BlockLayout(const Block& block, const ReplyTheme& theme);

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] const QString& plainText() const { return m_plainText; }

    /// Sets as much as one step allows; true once all is set.
    bool layOutMore(double width);
    [[nodiscard]] bool isDone() const { return m_isDone; }
    [[nodiscard]] double height() const { return m_height; }
    [[nodiscard]] double naturalWidth() const;

    [[nodiscard]] qsizetype positionAt(QPointF point) const;
    /// The character under a point, or else the nearest in its line.
    [[nodiscard]] qsizetype characterAt(QPointF point) const;
    [[nodiscard]] bool covers(QPointF point, BlockRange range) const;
    [[nodiscard]] QRectF firstLineRect(BlockRange range) const;
    [[nodiscard]] QRectF cursorRect(qsizetype position) const;
    [[nodiscard]] QString linkAt(QPointF point) const;
    /// The link that the character after the position belongs to; "" for none.
    [[nodiscard]] QString linkAt(qsizetype position) const;
    /// Of the text that the position is in.
    [[nodiscard]] Qt::LayoutDirection directionAt(qsizetype position) const;

    /// One text of the block: an item of a list, a cell of a table, or all that the block says.
    struct Part {
        BlockRange range; // in the plain text
        QRectF place;
        QString marker; // of an item: "•", "2."
        int row = 0;    // of a cell; 0 is the header
        int column = 0;
    };
    [[nodiscard]] int partCount() const { return static_cast<int>(m_pieces.size()); }
    [[nodiscard]] Part part(int index) const;
    /// Of a table: its columns, and the part that is a cell of it; -1 if its row is too short.
    [[nodiscard]] int columnCount() const { return m_columns; }
    [[nodiscard]] int partAt(int row, int column) const;
    /// The part that a position is in; -1 in a block without text.
    [[nodiscard]] int partOf(qsizetype position) const;
    /// The line that a position is in, up to where the next one begins.
    [[nodiscard]] BlockRange lineAt(qsizetype position) const;
    /// The links of a part, in their order.
    struct Link {
        BlockRange range;
        QString address;
    };
    [[nodiscard]] QList<Link> links(int part) const;

    /// Code that is wider than its plate is moved sideways; false if there is nothing to move.
    bool scrollBy(double dx);
    /// Moves it until a caret at the position is in its plate; true if that took a move.
    bool scrollTo(qsizetype position);

    void draw(QPainter& painter, const QRectF& clip, BlockRange selection) const;

  private:
    // One text of the block, with its marker.
    struct Piece {
        TextFlow flow;
        qsizetype start = 0; // in the plain text
        QPointF at{};
        ReplyStyle::Type type{};
        QString marker{};
        ReplyStyle::Type markerType{};
        int column = 0;
        int row = 0;
    };

    void addText(const QString& text, const ReplyStyle::Type& type);
    void addPiece(TextFlow::Source source, const ReplyStyle::Type& type, QChar separator);
    void addItems(const QStringList& items, bool isNumbered);
    void addCode(const QString& text);
    void addTable(const Block& block);
    void addRow(const QStringList& cells, int row, const ReplyStyle::Type& type);
    [[nodiscard]] double overflow() const;

    bool layOutTable(double width);
    bool layOutStack(double width);
    [[nodiscard]] double indent() const;
    [[nodiscard]] std::vector<ColumnNeed> columnNeeds() const;
    void placeRows(const std::vector<double>& columns);

    [[nodiscard]] const Piece* pieceAt(QPointF point) const;
    [[nodiscard]] const Piece* pieceOf(qsizetype position) const;
    [[nodiscard]] QPointF originOf(const Piece& piece) const;
    void drawPlate(QPainter& painter) const;
    void drawPlateEdge(QPainter& painter, const QRectF& plate) const;
    void drawPieces(QPainter& painter, const QRectF& clip, BlockRange selection) const;
    void drawCode(QPainter& painter, const QRectF& clip, BlockRange selection) const;
    void fadeEnds(QPainter& painter, const QRectF& room) const;
    void drawPiece(QPainter& painter, const Piece& piece, const QRectF& clip,
                   BlockRange selection) const;
    void drawMarker(QPainter& painter, const Piece& piece) const;
    [[nodiscard]] QColor inkAt(double opacity) const;
    [[nodiscard]] QColor ruleInk(double opacity) const;

    Kind m_kind;
    ReplyTheme m_theme;
    QString m_plainText;
    std::vector<Piece> m_pieces;
    std::size_t m_setPieces = 0;
    int m_columns = 0;
    Qt::LayoutDirection m_direction = Qt::LeftToRight;
    double m_width = -1;
    double m_height = 0;
    double m_scroll = 0; // of code, to the right
    double m_headerRule = 0;
    double m_numberColumn = ReplyStyle::numberColumn;
    bool m_isDone = false;
};

} // namespace vorq
