#include "ui/reply/ReplyBlocksModel.h"

#include <algorithm>

namespace vorq {

void ReplyBlocksModel::setRaw(const QString& raw) {
    if (raw == m_raw) return;
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
    replace(static_cast<int>(head), static_cast<int>(m_blocks.size() - head - tail),
            next.mid(head, next.size() - head - tail));
}

void ReplyBlocksModel::replace(int row, int count, const QList<Block>& with) {
    const int changed = std::min(count, static_cast<int>(with.size()));
    for (int i = 0; i < changed; ++i)
        m_blocks[row + i] = with[i];
    if (changed > 0) emit dataChanged(index(row), index(row + changed - 1));
    const int at = row + changed;
    if (count > changed) {
        beginRemoveRows({}, at, row + count - 1);
        m_blocks.remove(at, count - changed);
        endRemoveRows();
    }
    const int added = static_cast<int>(with.size()) - changed;
    if (added <= 0) return;
    beginInsertRows({}, at, at + added - 1);
    for (int i = 0; i < added; ++i)
        m_blocks.insert(at + i, with[changed + i]);
    endInsertRows();
}

int ReplyBlocksModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_blocks.size());
}

QVariant ReplyBlocksModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Block& block = m_blocks[index.row()];
    if (role == KindRole) return QString(AssistantReplyDocument::kindName(block.kind));
    if (role == TextRole || role == Qt::DisplayRole) return block.text;
    return {};
}

QHash<int, QByteArray> ReplyBlocksModel::roleNames() const {
    return {{KindRole, "kind"}, {TextRole, "text"}};
}

} // namespace vorq
