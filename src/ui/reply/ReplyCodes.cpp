#include "ui/reply/ReplyCodes.h"

#include "support/RecordTable.h"

#include <algorithm>

namespace vorq {
namespace {

constexpr auto codeRoles = recordTable<ReplyCodes::Code>(
    noDisplayRole, {
                       {ReplyCodes::NumberRole, "number",
                        [](const ReplyCodes::Code& code) -> QVariant { return code.number; }},
                       {ReplyCodes::PlateRole, "plateRect",
                        [](const ReplyCodes::Code& code) -> QVariant { return code.plate; }},
                   });

} // namespace

void ReplyCodes::setCodes(const QList<Code>& codes) {
    if (codes == m_codes) return;
    if (codes.isEmpty()) return dropOutside(0, -1);
    const int first = codes.front().number;
    dropOutside(first, codes.back().number);
    const qsizetype above = m_codes.isEmpty() ? codes.size() : m_codes.front().number - first;
    addAt(0, codes.first(above));
    const int kept = rowCount();
    addAt(kept, codes.sliced(kept));
    for (int row = 0; row < kept; ++row) {
        if (m_codes[row] == codes[row]) continue;
        m_codes[row] = codes[row];
        emit dataChanged(index(row), index(row), {PlateRole});
    }
}

void ReplyCodes::dropOutside(int first, int last) {
    for (int row = rowCount() - 1; row >= 0; --row) {
        if (m_codes[row].number >= first && m_codes[row].number <= last) continue;
        beginRemoveRows({}, row, row);
        m_codes.removeAt(row);
        endRemoveRows();
    }
}

void ReplyCodes::addAt(int row, const QList<Code>& codes) {
    if (codes.isEmpty()) return;
    beginInsertRows({}, row, row + static_cast<int>(codes.size()) - 1);
    m_codes = m_codes.first(row) + codes + m_codes.sliced(row);
    endInsertRows();
}

int ReplyCodes::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_codes.size());
}

QVariant ReplyCodes::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    return codeRoles.value(m_codes[index.row()], role);
}

QHash<int, QByteArray> ReplyCodes::roleNames() const {
    return codeRoles.roleNames();
}

} // namespace vorq
