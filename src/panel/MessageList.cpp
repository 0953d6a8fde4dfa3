#include "panel/MessageList.h"

#include "support/RecordTable.h"

#include <algorithm>
#include <iterator>

namespace vorq {
namespace {

QStringList followUpLabels(const VorqMessage& message) {
    if (!message.followUp) return {};
    return {message.followUp->labels.begin(), message.followUp->labels.end()};
}

constexpr auto messageRoles = recordTable<VorqMessage>(
    MessageList::TextRole,
    {
        {MessageList::IdRole, "messageId",
         [](const VorqMessage& message) -> QVariant { return message.id; }},
        {MessageList::RoleRole, "messageRole",
         [](const VorqMessage& message) -> QVariant { return rawString(message.role); }},
        {MessageList::TextRole, "text",
         [](const VorqMessage& message) -> QVariant { return message.text; }},
        {MessageList::IsWorkingRole, "isWorking",
         [](const VorqMessage& message) -> QVariant { return message.isWorking; }},
        {MessageList::IsTypingRole, "isTyping",
         [](const VorqMessage& message) -> QVariant { return message.isTyping; }},
        {MessageList::FollowUpQuestionRole, "followUpQuestion",
         [](const VorqMessage& message) -> QVariant {
             return message.followUp ? message.followUp->question : QString();
         }},
        {MessageList::FollowUpLabelsRole, "followUpLabels",
         [](const VorqMessage& message) -> QVariant { return followUpLabels(message); }},
        {MessageList::SentTextRole, "sentText",
         [](const VorqMessage& message) -> QVariant {
             return message.sent ? message.sent->text : QString();
         }},
        {MessageList::SentApplicationRole, "sentApplication",
         [](const VorqMessage& message) -> QVariant {
             return message.sent ? message.sent->application : QString();
         }},
        {MessageList::CanRetryRole, "canRetry",
         [](const VorqMessage& message) -> QVariant { return message.canRetry; }},
    });

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
    const QList<int> roles = messageRoles.changedRoles(*found, message);
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
    return messageRoles.value(m_messages[static_cast<std::size_t>(index.row())], role);
}

QHash<int, QByteArray> MessageList::roleNames() const {
    return messageRoles.roleNames();
}

} // namespace vorq
