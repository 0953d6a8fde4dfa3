#include "panel/MessageList.h"

#include <algorithm>
#include <iterator>

namespace vorq {
namespace {

QList<int> changedRoles(const VorqMessage& before, const VorqMessage& after) {
    QList<int> roles;
    if (before.role != after.role) roles += MessageList::RoleRole;
    if (before.text != after.text) roles += MessageList::TextRole;
    if (before.isWorking != after.isWorking) roles += MessageList::IsWorkingRole;
    if (before.isTyping != after.isTyping) roles += MessageList::IsTypingRole;
    if (before.followUp != after.followUp)
        roles += {MessageList::FollowUpQuestionRole, MessageList::FollowUpLabelsRole};
    if (before.sent != after.sent)
        roles += {MessageList::SentTextRole, MessageList::SentApplicationRole};
    if (before.canRetry != after.canRetry) roles += MessageList::CanRetryRole;
    return roles;
}

} // namespace

const VorqMessage* MessageList::find(const QUuid& id) const {
    const auto found = std::ranges::find(m_messages, id, &VorqMessage::id);
    return found == m_messages.end() ? nullptr : &*found;
}

bool MessageList::hasWorking() const {
    return std::ranges::any_of(m_messages, &VorqMessage::isWorking);
}

void MessageList::append(VorqMessage message) {
    const int row = rowCount();
    beginInsertRows({}, row, row);
    m_messages.push_back(std::move(message));
    endInsertRows();
    emit changed();
}

void MessageList::update(const VorqMessage& message) {
    const auto found = std::ranges::find(m_messages, message.id, &VorqMessage::id);
    if (found == m_messages.end() || *found == message) return;
    const QList<int> roles = changedRoles(*found, message);
    *found = message;
    if (!roles.isEmpty()) {
        const QModelIndex row = index(static_cast<int>(std::distance(m_messages.begin(), found)));
        emit dataChanged(row, row, roles);
    }
    emit changed();
}

void MessageList::updateAll(const std::function<void(VorqMessage&)>& change) {
    // By index, since whoever hears of a change may change the list in turn.
    for (std::size_t row = 0; row < m_messages.size(); ++row) {
        VorqMessage message = m_messages[row];
        change(message);
        update(message);
    }
}

void MessageList::removeIf(const std::function<bool(const VorqMessage&)>& condemned) {
    bool removed = false;
    for (int row = rowCount() - 1; row >= 0; --row) {
        if (row >= rowCount()) continue;
        const auto message = m_messages.begin() + row;
        if (!condemned(*message)) continue;
        beginRemoveRows({}, row, row);
        m_messages.erase(message);
        endRemoveRows();
        removed = true;
    }
    if (removed) emit changed();
}

void MessageList::clear() {
    if (m_messages.empty()) return;
    beginRemoveRows({}, 0, rowCount() - 1);
    m_messages.clear();
    endRemoveRows();
    emit changed();
}

int MessageList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_messages.size());
}

QVariant MessageList::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const VorqMessage& message = m_messages[static_cast<std::size_t>(index.row())];
    switch (role) {
    case IdRole:
        return message.id;
    case RoleRole:
        return rawString(message.role);
    case Qt::DisplayRole:
    case TextRole:
        return message.text;
    case IsWorkingRole:
        return message.isWorking;
    case IsTypingRole:
        return message.isTyping;
    case FollowUpQuestionRole:
        return message.followUp ? message.followUp->question : QString();
    case FollowUpLabelsRole:
        if (!message.followUp) return QStringList();
        return QStringList(message.followUp->labels.begin(), message.followUp->labels.end());
    case SentTextRole:
        return message.sent ? message.sent->text : QString();
    case SentApplicationRole:
        return message.sent ? message.sent->application : QString();
    case CanRetryRole:
        return message.canRetry;
    default:
        return {};
    }
}

QHash<int, QByteArray> MessageList::roleNames() const {
    return {{IdRole, "messageId"},
            {RoleRole, "messageRole"},
            {TextRole, "text"},
            {IsWorkingRole, "isWorking"},
            {IsTypingRole, "isTyping"},
            {FollowUpQuestionRole, "followUpQuestion"},
            {FollowUpLabelsRole, "followUpLabels"},
            {SentTextRole, "sentText"},
            {SentApplicationRole, "sentApplication"},
            {CanRetryRole, "canRetry"}};
}

} // namespace vorq
