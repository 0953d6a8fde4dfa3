#include "panel/LateAnswers.h"

#include "panel/PanelConversation.h"

namespace vorq {

void LateAnswers::sayOnce(const QString& sentence, LibraryState& library, Saved saved) {
    if (m_waiting.contains(sentence)) return;
    m_waiting += sentence;
    // Not before: the panel may be made after this object.
    connect(&m_panel, &PanelConversation::dropped, this, &LateAnswers::forget,
            Qt::UniqueConnection);
    if (!m_conversation) m_conversation = std::make_unique<QObject>();
    connect(
        &library, saved, m_conversation.get(), [this, sentence] { say(sentence); },
        Qt::SingleShotConnection);
}

void LateAnswers::forget() {
    m_conversation.reset();
    m_waiting.clear();
}

void LateAnswers::say(const QString& sentence) {
    m_waiting.removeAll(sentence);
    m_panel.answer(sentence);
}

} // namespace vorq
