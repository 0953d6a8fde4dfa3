#include "panel/StudyContext.h"

namespace vorq {

std::optional<QString> StudyContext::activeStudySource() const {
    if (!m_activeStudyNoteID || !m_lookup) return std::nullopt;
    return m_lookup(*m_activeStudyNoteID);
}

void StudyContext::setActiveNote(const QUuid& id, const QString& originalBody) {
    m_activeStudyNoteID = id;
    m_originalBody = originalBody;
    emit activeNoteChanged();
}

void StudyContext::setActiveStudyNoteID(const QUuid& id) {
    if (m_activeStudyNoteID == id) return;
    m_activeStudyNoteID = id;
    m_originalBody.clear();
    emit activeNoteChanged();
}

void StudyContext::clearActiveStudyNote() {
    m_activeStudyNoteID.reset();
    m_originalBody.clear();
    setLastStudyResearch({});
    emit activeNoteChanged();
}

void StudyContext::setLastStudyResearch(const QString& text) {
    if (m_lastStudyResearch == text) return;
    m_lastStudyResearch = text;
    emit lastStudyResearchChanged();
}

} // namespace vorq
