#pragma once

#include "ui/reply/ReplyElement.h"

#include <map>

namespace vorq {

/// The elements beneath a reply, made when a screen reader asks for them. Without one there are
/// none. Main thread only.
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

    /// Ends the elements of all blocks from this one on.
    void dropFrom(int block);

    /// Whether a block of the kind is one text, which stands for it.
    [[nodiscard]] static bool isOneText(BlockLayout::Kind kind);

  private:
    [[nodiscard]] QAccessibleInterface* made(const ReplyElementKey& key);

    ReplyView& m_view;
    std::map<ReplyElementKey, QAccessible::Id> m_ids;
};

} // namespace vorq
