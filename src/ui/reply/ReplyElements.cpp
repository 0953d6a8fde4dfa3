#include "ui/reply/ReplyElements.h"

#include "ui/reply/ReplyTableElement.h"
#include "ui/reply/ReplyView.h"

namespace vorq {

ReplyElements::~ReplyElements() {
    dropFrom(0);
}

QAccessibleInterface* ReplyElements::reply() const {
    return QAccessible::queryAccessibleInterface(&m_view);
}

QAccessibleInterface* ReplyElements::at(const ReplyElementKey& key) {
    const auto found = m_ids.find(key);
    if (found != m_ids.end()) return QAccessible::accessibleInterface(found->second);
    QAccessibleInterface* element = made(key);
    m_ids.emplace(key, QAccessible::registerAccessibleInterface(element));
    return element;
}

QAccessibleInterface* ReplyElements::made(const ReplyElementKey& key) {
    const BlockLayout& block = m_view.layout().block(key.block);
    if (key.link != ReplyElementKey::none) return new ReplyLinkElement(*this, key);
    const bool isTable = block.kind() == BlockLayout::Kind::Table;
    if (key.part == ReplyElementKey::none && isTable) return new ReplyTableElement(*this, key);
    if (key.part == ReplyElementKey::none) return new ReplyGroupElement(*this, key);
    if (key.part >= block.partCount()) return new ReplyBlankCell(*this, key);
    if (isTable) return new ReplyCellElement(*this, key);
    return new ReplyTextElement(*this, key);
}

ReplyElementKey ReplyElements::keyOf(int block) const {
    return {block, isOneText(m_view.layout().kind(block)) ? 0 : ReplyElementKey::none};
}

// A divider has no text for a caret, and stands for itself.
ReplyElementKey ReplyElements::keyAt(const ReplyPosition& position) const {
    return {position.block, m_view.layout().block(position.block).partOf(position.offset)};
}

bool ReplyElements::isFocused(const ReplyElement& element) const {
    return m_view.hasActiveFocus() && m_view.isCaretShown() && m_view.layout().count() > 0 &&
           keyAt(m_view.cursor()) == element.key();
}

void ReplyElements::dropFrom(int block) {
    const auto first = m_ids.lower_bound({block, ReplyElementKey::none, ReplyElementKey::none});
    for (auto id = first; id != m_ids.end(); ++id)
        QAccessible::deleteAccessibleInterface(id->second);
    m_ids.erase(first, m_ids.end());
}

bool ReplyElements::isOneText(BlockLayout::Kind kind) {
    using enum BlockLayout::Kind;
    return kind == Title || kind == Section || kind == Body;
}

} // namespace vorq
