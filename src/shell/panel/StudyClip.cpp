#include "shell/panel/StudyClip.h"

#include "panel/StudyContext.h"
#include "panel/StudyNotes.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {

StudyClip::StudyClip(StudyContext& study, StudyNotes& notes, AttachmentList& attachments)
    : m_study(study), m_notes(notes), m_attachments(attachments) {
    connect(&attachments, &AttachmentList::countChanged, this, &StudyClip::leaveStudyWithoutClip);
    connect(&study, &StudyContext::activeNoteChanged, this, &StudyClip::followStudy);
    followStudy();
}

bool StudyClip::isOne(const PromptAttachment& attachment) const {
    return m_note && attachment.noteID == m_note;
}

bool StudyClip::isNews(const PromptAttachment& attachment) const {
    return !m_wasSent || !isOne(attachment);
}

// The prompt itself may have loaded the note.
void StudyClip::setSent(const std::optional<QUuid>& studiedBefore) {
    m_wasSent = m_note && m_note == studiedBefore;
}

void StudyClip::followStudy() {
    const std::optional<QUuid> active = m_study.activeStudyNoteID();
    if (m_note == active) return;
    const std::optional<QUuid> former = std::exchange(m_note, std::nullopt);
    m_wasSent = false;
    // Also a clip of the same note that the user attached before: the study has its text already.
    m_attachments.removeIf([&](const PromptAttachment& held) {
        return held.noteID && (held.noteID == former || held.noteID == active);
    });
    if (!active) return;
    PromptAttachment attachment;
    attachment.fileName = u"Notes"_s;
    attachment.noteID = active; // its text goes with each turn of the study anyway
    m_note = active;
    m_attachments.append(attachment);
}

void StudyClip::leaveStudyWithoutClip() {
    const auto isHeld = [this](const PromptAttachment& held) { return isOne(held); };
    if (!m_note || std::ranges::any_of(m_attachments.attachments(), isHeld)) return;
    m_note.reset();
    m_notes.leaveStudy();
}

} // namespace vorq
