#include "conversation/BlockReveal.h"

#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <span>

namespace vorq {
namespace {

constexpr qsizetype instantLimit = 140;

} // namespace

bool isInstantAssistantReply(QStringView text) {
    const QStringView reply = trimmed(text);
    if (reply.isEmpty()) return true;
    if (graphemeCount(reply) > instantLimit) return false;
    return AssistantReplyDocument::blockCount(reply) < 2;
}

BlockReveal::BlockReveal(QString reply, QStringView existing)
    : m_reply(std::move(reply)),
      m_blocks(AssistantReplyDocument::blocks(m_reply)),
      m_shown(existing.isEmpty() ? 0 : AssistantReplyDocument::blockCount(existing)) {}

std::optional<BlockReveal::Step> BlockReveal::next() {
    if (m_ended) return std::nullopt;
    if (m_shown >= m_blocks.size()) {
        m_ended = true;
        return Step{m_reply, false};
    }
    ++m_shown;
    if (m_shown == m_blocks.size()) return Step{m_reply, false};
    const auto shown = std::span(m_blocks).first(static_cast<std::size_t>(m_shown));
    return Step{AssistantReplyDocument::source(shown), true};
}

} // namespace vorq
