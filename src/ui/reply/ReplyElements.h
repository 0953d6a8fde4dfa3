#pragma once

#include "ui/reply/ReplyBlocks.h"
#include "ui/reply/ReplyElement.h"

#include <map>

namespace vorq {

/// The elements beneath a reply, made when a screen reader asks for them. Without one there are
/// none. An element outlives changes of its block for as long as what it stands for is still there,
/// so that whoever reads a growing reply keeps their place. Main thread only.
class ReplyElements {
  public:
    /// The view must outlive this object.
    explicit ReplyElements(ReplyView& view) : m_view(view) {}
    ReplyElements(const ReplyElements&) = delete;
    ReplyElements& operator=(const ReplyElements&) = delete;
    ~ReplyElements();

    [[nodiscard]] ReplyView& view() const { return m_view; }
    /// The element of the whole reply.
    [[nodiscard]] QAccessibleInterface* reply() const;
    [[nodiscard]] QAccessibleInterface* at(const ReplyElementKey& key);
    /// What stands for a block right beneath the reply.
    [[nodiscard]] ReplyElementKey keyOf(int block) const;
    /// The element that a caret at the position is in.
    [[nodiscard]] ReplyElementKey keyAt(const ReplyPosition& position) const;
    /// Whether the element has the caret of the reply, and so the keyboard.
    [[nodiscard]] bool isFocused(const ReplyElement& element) const;

    /// Once the layout has the changed blocks: elements of blocks that only moved go along, and
    /// those end that stand for nothing any more. Gives those, whose ids others may have next.
    QList<QAccessible::Id> followChange(const ReplyBlocks::Change& change);

    /// Whether a block of the kind is one text, which stands for it.
    [[nodiscard]] static bool isOneText(BlockLayout::Kind kind);

  private:
    struct Entry {
        QAccessible::Id id = 0;
        BlockLayout::Kind kind{}; // of its block
        bool isBlank = false;     // a cell that its row lacks
    };

    [[nodiscard]] QAccessibleInterface* made(const ReplyElementKey& key);
    [[nodiscard]] bool isStillThere(const ReplyElementKey& key, const Entry& entry) const;

    ReplyView& m_view;
    std::map<ReplyElementKey, Entry> m_entries;
};

} // namespace vorq
