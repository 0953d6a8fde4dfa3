#include "shell/PanelAnnouncer.h"

#include "core/MessageList.h"
#include "rendering/SpokenReply.h"

namespace vorq {

PanelAnnouncer::PanelAnnouncer(const MessageList& messages) : m_messages(messages) {
    connect(&messages, &MessageList::rowsInserted, this,
            [this](const QModelIndex&, int first, int last) { messagesCame(first, last); });
    connect(&messages, &MessageList::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex& last) {
                messagesChanged(first.row(), last.row());
            });
}

void PanelAnnouncer::messagesCame(int first, int last) {
    for (int row = first; row <= last; ++row) {
        const VorqMessage& message = m_messages.messages()[static_cast<std::size_t>(row)];
        if (!message.isWorking) continue;
        m_awaited = message.id;
        emit announced(message.text);
    }
}

void PanelAnnouncer::messagesChanged(int first, int last) {
    for (int row = first; row <= last; ++row) {
        const VorqMessage& message = m_messages.messages()[static_cast<std::size_t>(row)];
        // A failed reply whose turn runs again.
        if (message.isWorking && message.id != m_awaited) return messagesCame(row, row);
        if (!m_awaited || message.id != *m_awaited || message.isWorking || message.isTyping)
            continue;
        m_awaited.reset();
        emit announced(spokenReply(message.text));
        return;
    }
}

} // namespace vorq
