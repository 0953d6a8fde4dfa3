#include "ui/reply/ReplyElements.h"

#include "ui/reply/ReplyTableElement.h"
#include "ui/reply/ReplyView.h"

#include <utility>

namespace vorq {

ReplyElements::~ReplyElements() {
    for (const auto& [key, entry] : m_entries)
        QAccessible::deleteAccessibleInterface(entry.id);
}

QAccessibleInterface* ReplyElements::reply() const {
    return QAccessible::queryAccessibleInterface(&m_view);
}

QAccessibleInterface* ReplyElements::at(const ReplyElementKey& key) {
    const auto found = m_entries.find(key);
    if (found != m_entries.end()) return QAccessible::accessibleInterface(found->second.id);
    QAccessibleInterface* element = made(key);
    const BlockLayout& block = m_view.layout().block(key.block);
    m_entries.emplace(key, Entry{.id = QAccessible::registerAccessibleInterface(element),
                                 .kind = block.kind(),
                                 .isBlank = key.part >= block.partCount()});
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
    return m_view.hasActiveFocus() && m_view.selection().isCaretShown() &&
           m_view.layout().count() > 0 && keyAt(m_view.selection().cursor()) == element.key();
}

QList<QAccessible::Id> ReplyElements::followChange(const ReplyBlocks::Change& change) {
    QList<QAccessible::Id> ended;
    const int firstMoved = change.row + change.removed;
    for (const auto& [key, entry] : std::exchange(m_entries, {})) {
        ReplyElementKey next = key;
        if (key.block >= firstMoved) next.block += change.added - change.removed;
        const bool isChanged = key.block >= change.row && key.block < firstMoved;
        const bool hasSuccessor = key.block < change.row + change.added;
        if (isChanged && !(hasSuccessor && isStillThere(key, entry))) {
            QAccessible::deleteAccessibleInterface(entry.id);
            ended += entry.id;
            continue;
        }
        static_cast<ReplyElement*>(QAccessible::accessibleInterface(entry.id))->setKey(next);
        m_entries.emplace(next, entry);
    }
    return ended;
}

// A blank cell is counted on from the cells that there are, so a table that grows makes it another.
bool ReplyElements::isStillThere(const ReplyElementKey& key, const Entry& entry) const {
    const BlockLayout& block = m_view.layout().block(key.block);
    if (entry.isBlank || block.kind() != entry.kind || key.part >= block.partCount()) return false;
    return key.link == ReplyElementKey::none || key.link < block.links(key.part).size();
}

bool ReplyElements::isOneText(BlockLayout::Kind kind) {
    using enum BlockLayout::Kind;
    return kind == Title || kind == Section || kind == Body;
}

} // namespace vorq
