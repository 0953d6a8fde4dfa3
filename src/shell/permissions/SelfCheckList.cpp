#include "shell/permissions/SelfCheckList.h"

#include "shell/permissions/SelfCheckTitles.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {

void SelfCheckList::begin(const QStringList& ids) {
    m_finished = 0;
    m_isRunning = true;
    setRows(ids);
}

void SelfCheckList::setRows(const QStringList& ids) {
    if (!std::ranges::equal(m_rows, ids, {}, &Row::id)) {
        if (!m_rows.empty()) {
            beginRemoveRows({}, 0, rowCount() - 1);
            m_rows.clear();
            endRemoveRows();
        }
        if (ids.isEmpty()) return;
        beginInsertRows({}, 0, static_cast<int>(ids.size()) - 1);
        for (const QString& id : ids)
            m_rows.push_back({.id = id, .result = {}});
        endInsertRows();
        return;
    }
    for (Row& row : m_rows)
        row.result.reset();
    if (!m_rows.empty()) emit dataChanged(index(0), index(rowCount() - 1));
}

void SelfCheckList::finishCheck(const SelfCheck& result) {
    if (m_finished >= rowCount()) return;
    m_rows[static_cast<std::size_t>(m_finished)].result = result;
    const int last = std::min(m_finished + 1, rowCount() - 1);
    emit dataChanged(index(m_finished++), index(last));
}

void SelfCheckList::end() {
    m_isRunning = false;
    if (m_finished < rowCount()) emit dataChanged(index(m_finished), index(m_finished));
}

int SelfCheckList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QString SelfCheckList::verdictOf(int number) const {
    const auto& result = m_rows[static_cast<std::size_t>(number)].result;
    if (result) return selfCheckStates.nameOf(result->state);
    return m_isRunning && number == m_finished ? u"running"_s : u"waiting"_s;
}

QVariant SelfCheckList::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const Row& row = m_rows[static_cast<std::size_t>(index.row())];
    const SelfCheck result = row.result.value_or(SelfCheck());
    switch (role) {
    case Qt::DisplayRole:
    case TitleRole:
        return selfCheckTitle(row.id);
    case VerdictRole:
        return verdictOf(index.row());
    case SentenceRole:
        return result.sentence.translated();
    case AdviceRole:
        return result.advice.translated();
    case DetailsRole:
        return result.details;
    default:
        return {};
    }
}

QHash<int, QByteArray> SelfCheckList::roleNames() const {
    return {{TitleRole, "title"},
            {VerdictRole, "verdict"},
            {SentenceRole, "sentence"},
            {AdviceRole, "advice"},
            {DetailsRole, "details"}};
}

} // namespace vorq
