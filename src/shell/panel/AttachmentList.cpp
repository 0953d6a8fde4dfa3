#include "shell/panel/AttachmentList.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

QString kindOf(const PromptAttachment& attachment) {
    if (attachment.isDeepenSelection) return u"deepen"_s;
    if (attachment.isHubNote()) return u"note"_s;
    return attachment.imageDataURL ? u"photo"_s : u"doc"_s;
}

QString detailOf(const PromptAttachment& attachment) {
    if (attachment.isDeepenSelection)
        return attachment.textContent.value_or(QString()).simplified();
    return attachment.fileName;
}

} // namespace

void AttachmentList::append(const PromptAttachment& attachment) {
    beginInsertRows({}, count(), count());
    m_attachments += attachment;
    endInsertRows();
    renameOthers();
    emit countChanged();
}

void AttachmentList::removeAt(int row) {
    if (row < 0 || row >= count()) return;
    beginRemoveRows({}, row, row);
    m_attachments.removeAt(row);
    endRemoveRows();
    renameOthers();
    emit countChanged();
}

void AttachmentList::removeIf(const std::function<bool(const PromptAttachment&)>& condemned) {
    for (int row = count() - 1; row >= 0; --row)
        if (condemned(m_attachments[row])) removeAt(row);
}

// The titles of notes count them, so that each change may rename the others.
void AttachmentList::renameOthers() {
    if (m_attachments.isEmpty()) return;
    emit dataChanged(index(0), index(count() - 1), {NameRole});
}

int AttachmentList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant AttachmentList::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    if (role == NameRole) return composerDisplayNames(m_attachments).value(index.row());
    if (role == KindRole) return kindOf(m_attachments[index.row()]);
    if (role == DetailRole) return detailOf(m_attachments[index.row()]);
    return {};
}

QHash<int, QByteArray> AttachmentList::roleNames() const {
    return {{NameRole, "name"}, {KindRole, "kind"}, {DetailRole, "detail"}};
}

} // namespace vorq
