#include "panel/LateAnswers.h"

#include "panel/PanelConversation.h"

namespace vorq {

void LateAnswers::sayOnce(const QString& sentence, LibraryState& library, Saved saved) {
    if (m_waiting.contains(sentence)) return;
    m_waiting += sentence;
    connect(&library, saved, this, [this, sentence] { say(sentence); }, Qt::SingleShotConnection);
}

void LateAnswers::say(const QString& sentence) {
    m_waiting.removeAll(sentence);
    m_panel.answer(sentence);
}

} // namespace vorq
