#pragma once

#include "shell/panel/AttachmentList.h"

#include <QObject>
#include <QUuid>

#include <optional>

namespace vorq {

class StudyContext;
class StudyNotes;

/// The clip of the note under study, among the attachments for as long as it is studied. Taking it
/// off, in the composer or in the list of notes, ends the study. Main thread only.
class StudyClip final : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object.
    StudyClip(StudyContext& study, StudyNotes& notes, AttachmentList& attachments);

    /// The note; nothing if none is studied.
    [[nodiscard]] const std::optional<QUuid>& note() const { return m_note; }
    [[nodiscard]] bool isOne(const PromptAttachment& attachment) const;
    /// Whether the attachment is a reason to send: the clip that went out before stays, and is not.
    [[nodiscard]] bool isNews(const PromptAttachment& attachment) const;
    /// After a prompt went out, with the note that was studied before.
    void setSent(const std::optional<QUuid>& studiedBefore);

  private:
    void followStudy();
    void leaveStudyWithoutClip();

    StudyContext& m_study;
    StudyNotes& m_notes;
    AttachmentList& m_attachments;
    std::optional<QUuid> m_note;
    bool m_wasSent = false;
};

} // namespace vorq
