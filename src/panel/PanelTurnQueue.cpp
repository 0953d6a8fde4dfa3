#include "panel/PanelTurnQueue.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace vorq {

void PanelTurnQueue::submit(PanelTurn turn) {
    m_waiting.push_back(std::move(turn));
    drainIfIdle();
}

void PanelTurnQueue::drainIfIdle() {
    // What starts a turn may ask for the next before the turn is under way.
    if (m_isStarting) return;
    const QScopedValueRollback starting(m_isStarting, true);
    // A turn that comes to nothing must not leave the others waiting.
    while (!m_waiting.empty() && !m_isBusy()) {
        const PanelTurn turn = std::move(m_waiting.front());
        m_waiting.pop_front();
        m_start(turn);
    }
}

bool PanelTurnQueue::hasRetryOf(const QUuid& failedReply) const {
    return std::ranges::any_of(m_waiting, [&failedReply](const PanelTurn& turn) {
        const auto* retry = std::get_if<RetryTurn>(&turn);
        return retry && retry->failedReply == failedReply;
    });
}

} // namespace vorq
