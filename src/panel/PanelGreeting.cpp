#include "panel/PanelGreeting.h"

#include "panel/PanelTranscript.h"

using namespace Qt::StringLiterals;

namespace vorq {

void PanelGreeting::ensure() {
    if (!m_transcript.messages().messages().empty()) return;
    m_transcript.say(u"Hello 👋, Vorq here…"_s, AssistantReveal::Graphemes);
}

bool PanelGreeting::isAlone() const {
    const std::vector<VorqMessage>& messages = m_transcript.messages().messages();
    if (messages.size() != 1 || messages.front().role != MessageRole::Assistant) return false;
    return readsAsGreeting(messages.front()) || messages.front().isTyping;
}

} // namespace vorq
