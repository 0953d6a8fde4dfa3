#pragma once

#include "ui/reply/BlockLayout.h"

#include <QDeadlineTimer>

#include <compare>
#include <memory>
#include <vector>

namespace vorq {

/// A place in the text of a reply: a block and the UTF-16 units before the place in it.
struct ReplyPosition {
    int block = 0;
    qsizetype offset = 0;

    auto operator<=>(const ReplyPosition&) const = default;
};

/// From the earlier place to the later; equal for nothing.
struct ReplyRange {
    ReplyPosition from;
    ReplyPosition to;

    [[nodiscard]] bool isEmpty() const { return from >= to; }
    bool operator==(const ReplyRange&) const = default;
};

/// The blocks of a reply under each other, set from the top down in steps that can be interrupted.
/// What is not set yet has no height. Geometry is in logical pixels from the top left of the reply.
/// Main thread only.
class ReplyLayout {
  public:
    using Block = AssistantReplyDocument::Block;

    void setTheme(const ReplyTheme& theme);

    /// Puts the blocks in the place of so many from the row on.
    void replace(int row, int count, const QList<Block>& blocks);

    /// Sets blocks until all are set or the time is over; true once all are set.
    bool layOut(double width, QDeadlineTimer deadline);

    /// The height below which what was drawn before is out of date; it is settled by the call.
    [[nodiscard]] double takeStale();
    /// The height below which the row and what follows it are drawn.
    [[nodiscard]] double topOf(int row) const;

    [[nodiscard]] bool isDone() const { return m_done == count(); }
    [[nodiscard]] bool isSet(int row) const { return row < m_done; }
    [[nodiscard]] int count() const { return static_cast<int>(m_entries.size()); }
    [[nodiscard]] double height() const;
    [[nodiscard]] double naturalWidth() const;
    /// How many blocks were built so far, ever.
    [[nodiscard]] int builtBlocks() const { return m_builtBlocks; }

    [[nodiscard]] BlockLayout::Kind kind(int row) const { return at(row).source.kind; }
    [[nodiscard]] const BlockLayout& block(int row) const { return layoutOf(row); }
    [[nodiscard]] QRectF blockRect(int row) const;
    /// The block at or nearest above a height; -1 without any.
    [[nodiscard]] int blockAt(double y) const;

    [[nodiscard]] ReplyPosition positionAt(QPointF point) const;
    /// The character under a point, or else the nearest in its line.
    [[nodiscard]] ReplyPosition characterAt(QPointF point) const;
    [[nodiscard]] bool covers(QPointF point, const ReplyRange& range) const;
    [[nodiscard]] QRectF firstLineRect(const ReplyRange& range) const;
    [[nodiscard]] QRectF cursorRect(const ReplyPosition& position) const;
    [[nodiscard]] QString linkAt(QPointF point) const;
    /// As it is set, with the marks that keep code apart.
    [[nodiscard]] QString text(const ReplyRange& range) const;
    /// As it was written.
    [[nodiscard]] QString written(const ReplyRange& range) const;
    [[nodiscard]] ReplyPosition end() const;
    /// The same, or the end of its block if that is before.
    [[nodiscard]] ReplyPosition clamped(const ReplyPosition& position) const;
    /// The UTF-16 units of the whole text before a position, and the other way round. An offset
    /// beyond the text is its end.
    [[nodiscard]] qsizetype offsetOf(const ReplyPosition& position) const;
    [[nodiscard]] ReplyPosition positionOf(qsizetype offset) const;
    [[nodiscard]] BlockRange within(int row, const ReplyRange& range) const;
    bool scrollAt(QPointF point, double dx);
    /// Moves wide code sideways until the position is in its plate; true if that took a move.
    bool scrollTo(const ReplyPosition& position);

    struct Look {
        ReplyRange selection;
        /// Blocks from this row on are still arriving.
        int arrivingFrom = -1;
        double arrivingOpacity = 1;
    };
    void draw(QPainter& painter, const QRectF& clip, const Look& look) const;

  private:
    struct Entry {
        Block source;
        /// Built when it is first needed.
        mutable std::unique_ptr<BlockLayout> layout;
        double y = 0;
    };

    [[nodiscard]] const Entry& at(int row) const {
        return m_entries[static_cast<std::size_t>(row)];
    }
    [[nodiscard]] Entry& at(int row) { return m_entries[static_cast<std::size_t>(row)]; }
    [[nodiscard]] BlockLayout& layoutOf(int row) const;
    void goOnFrom(int row);

    ReplyTheme m_theme;
    std::vector<Entry> m_entries;
    double m_width = -1;
    int m_done = 0; // so many from the top are set
    mutable int m_builtBlocks = 0;
    double m_stale = 0;
};

} // namespace vorq
