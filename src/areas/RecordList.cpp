#include "areas/RecordList.h"

namespace vorq {

void RecordListModel::tellChange(int row, const QList<int>& roles) {
    if (roles.isEmpty()) return;
    const QModelIndex index = this->index(row);
    emit dataChanged(index, index, roles);
}

} // namespace vorq
