#include "ui/reply/ReplyBlocks.h"

#include <algorithm>

namespace vorq {

ReplyBlocks::Change ReplyBlocks::setRaw(const QString& raw) {
    if (raw == m_raw) return {};
    m_raw = raw;
    const QList<Block> next = AssistantReplyDocument::blocks(raw);
    const qsizetype shorter = std::min(m_blocks.size(), next.size());
    qsizetype head = 0;
    while (head < shorter && m_blocks[head] == next[head])
        ++head;
    qsizetype tail = 0;
    while (tail < shorter - head &&
           m_blocks[m_blocks.size() - 1 - tail] == next[next.size() - 1 - tail])
        ++tail;
    const Change change{.row = static_cast<int>(head),
                        .removed = static_cast<int>(m_blocks.size() - head - tail),
                        .added = static_cast<int>(next.size() - head - tail)};
    m_blocks = next;
    return change;
}

} // namespace vorq
