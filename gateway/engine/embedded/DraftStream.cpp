#include "engine/embedded/DraftStream.h"

#include <utility>

namespace vorq::gateway {

DraftStream::DraftStream(ReplyDraft draft, std::chrono::milliseconds delay)
    : m_draft(std::move(draft)), m_delay(delay) {}

ReplyStep DraftStream::step(SteadyTime now) {
    if (m_shown == m_draft.pieces.size()) return {};
    if (now < m_due) return {.kind = ReplyStep::Kind::Waits, .again = m_due};
    m_soFar += m_draft.pieces[m_shown++];
    m_due = now + m_delay;
    return {.kind = ReplyStep::Kind::Grew, .text = m_soFar};
}

FinishedReply DraftStream::result() {
    return Analysis{.summary = m_draft.text(),
                    .feedback = {},
                    .corrections = {},
                    .sources = {},
                    .followUp = m_draft.followUp};
}

} // namespace vorq::gateway
