#pragma once

#include "capture/attachments/PromptAttachment.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <cstddef>
#include <deque>
#include <functional>
#include <variant>

namespace vorq {

/// A turn that has its bubble and is not sent yet. Texts are trimmed.
struct PromptTurn {
    QUuid bubble;
    QString prompt;
    QList<PromptAttachment> attachments;
};
struct DeepenTurn {
    QUuid bubble;
    QString excerpt;
    QString userPrompt;
};
struct RetryTurn {
    QUuid failedReply;
};
using PanelTurn = std::variant<PromptTurn, DeepenTurn, RetryTurn>;

/// The turns of the panel that wait for the one under way, first in first out, without a limit.
/// Main thread only.
class PanelTurnQueue {
  public:
    /// Whether a turn is under way.
    using IsBusy = std::function<bool()>;
    /// Starts a turn, which is under way as soon as this has returned, or has come to nothing.
    using Start = std::function<void(const PanelTurn&)>;

    PanelTurnQueue(IsBusy isBusy, Start start)
        : m_isBusy(std::move(isBusy)), m_start(std::move(start)) {}

    /// Starts the turn, or lets it wait.
    void submit(PanelTurn turn);

    /// Starts the turn that has waited longest, unless one is under way. To be called whenever one
    /// may have ended.
    void drainIfIdle();

    /// Drops what waits.
    void clear() { m_waiting.clear(); }

    [[nodiscard]] std::size_t size() const { return m_waiting.size(); }
    [[nodiscard]] bool hasRetryOf(const QUuid& failedReply) const;

  private:
    IsBusy m_isBusy;
    Start m_start;
    std::deque<PanelTurn> m_waiting;
    bool m_isStarting = false;
};

} // namespace vorq
