#pragma once

#include "rendering/AssistantReplyDocument.h"

#include <QString>

#include <optional>

namespace vorq {

/// Whether a reply is short enough to be shown whole at once.
[[nodiscard]] bool isInstantAssistantReply(QStringView text);

/// The steps by which a finished reply grows block by block, from what already stands on screen.
class BlockReveal {
  public:
    struct Step {
        QString text;
        bool isTyping; ///< more steps show more text
        bool operator==(const Step&) const = default;
    };

    /// The reply, trimmed and not empty, and what of it is shown already ("" for nothing).
    BlockReveal(QString reply, QStringView existing);

    /// Whether the reply has no block at all, such as one of empty fences.
    [[nodiscard]] bool isEmpty() const { return m_blocks.isEmpty(); }

    /// The next step; nothing after the last, which always shows the whole reply.
    [[nodiscard]] std::optional<Step> next();

  private:
    QString m_reply;
    QList<AssistantReplyDocument::Block> m_blocks;
    qsizetype m_shown = 0;
    bool m_ended = false;
};

} // namespace vorq
