#include "shell/panel/PanelAnnouncer.h"

#include "panel/MessageList.h"
#include "panel/WorkStatus.h"
#include "rendering/SpokenReply.h"

#include <utility>

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
        announceOnceComplete(); // the next turn begins as soon as a reply is complete
        m_awaited = message.id;
        emit announced(labelOf(VorqWorkStatus::Working));
    }
}

void PanelAnnouncer::messagesChanged(int first, int last) {
    for (int row = first; row <= last; ++row) {
        const VorqMessage& message = m_messages.messages()[static_cast<std::size_t>(row)];
        // A failed reply whose turn runs again.
        if (message.isWorking && message.id != m_awaited) return messagesCame(row, row);
    }
    // A reply that was streamed stops typing for a moment before its last blocks are typed, so it
    // counts as complete only if it still is when the event loop is back.
    if (!m_awaited || std::exchange(m_isLookingAgain, true)) return;
    const auto lookAgain = [this] {
        m_isLookingAgain = false;
        announceOnceComplete();
    };
    QMetaObject::invokeMethod(this, lookAgain, Qt::QueuedConnection);
}

void PanelAnnouncer::announceOnceComplete() {
    const VorqMessage* message = m_awaited ? m_messages.find(*m_awaited) : nullptr;
    if (!message || message->isWorking || message->isTyping) return;
    m_awaited.reset();
    emit announced(spokenReply(message->text));
}

} // namespace vorq
