#pragma once

#include "ui/reply/ReplyBlocks.h"
#include "ui/reply/ReplyLayout.h"

#include <optional>

class QKeyEvent;

namespace vorq {

/// What is selected in a reply, where its caret is, and where keys lead that. It shows nothing and
/// tells nobody. Points are in the reply, in logical pixels. Main thread only.
class ReplySelection {
  public:
    /// The layout must outlive this object.
    explicit ReplySelection(const ReplyLayout& layout) : m_layout(layout) {}

    [[nodiscard]] ReplyPosition anchor() const { return m_anchor; }
    /// The end that moves, also while nothing is selected.
    [[nodiscard]] ReplyPosition cursor() const { return m_cursor; }
    [[nodiscard]] ReplyRange range() const;
    [[nodiscard]] bool isEmpty() const { return range().isEmpty(); }
    /// Whether the caret is in the text, put there by the arrow keys.
    [[nodiscard]] bool isCaretShown() const { return m_isCaretShown; }
    /// As it was written; nothing if nothing is selected.
    [[nodiscard]] std::optional<QString> text() const;

    // These give whether anything changed.
    bool select(ReplyPosition anchor, ReplyPosition cursor);
    bool setCaretShown(bool isShown);
    /// Once the layout has the changed blocks: what is selected moves with its block, and is
    /// dropped where that is gone.
    bool followChange(const ReplyBlocks::Change& change);

    [[nodiscard]] ReplyRange wordAt(QPointF point) const;
    [[nodiscard]] ReplyRange blockAt(QPointF point) const;
    /// The address of the link that the caret is in; "" for none.
    [[nodiscard]] QString linkAtCaret() const;
    /// Where the key leads the end that moves; nothing if it is no key of the text.
    [[nodiscard]] std::optional<ReplyPosition> positionAfter(const QKeyEvent& event) const;

  private:
    [[nodiscard]] ReplyPosition lineBeside(bool isBelow) const;
    [[nodiscard]] bool isReadLeftwards() const;
    [[nodiscard]] ReplyPosition neighbour(bool isForward, bool byWord) const;

    const ReplyLayout& m_layout;
    ReplyPosition m_anchor;
    ReplyPosition m_cursor;
    bool m_isCaretShown = false;
};

} // namespace vorq
