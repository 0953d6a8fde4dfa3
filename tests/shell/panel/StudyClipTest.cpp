#include "shell/panel/StudyClip.h"

#include "doubles/panel/ConversationFixture.h"

namespace vorq {
namespace {

class StudyClipTest : public ConversationFixture {
  protected:
    ~StudyClipTest() override { m_clip.reset(); }

    StudyClip& clip() {
        if (!m_clip)
            m_clip =
                std::make_unique<StudyClip>(state().study(), state().studyNotes(), attachments);
        return *m_clip;
    }

    AttachmentList attachments;

  private:
    std::unique_ptr<StudyClip> m_clip;
};

TEST_F(StudyClipTest, ANoteHasAClipAsLongAsItIsStudied) {
    clip();
    const QUuid id = QUuid::createUuid();
    state().study().setActiveNote(id, "body");
    ASSERT_EQ(attachments.count(), 1);
    EXPECT_EQ(attachments.attachments()[0].noteID, id);
    EXPECT_TRUE(clip().isOne(attachments.attachments()[0]));
    state().study().setActiveNote(QUuid::createUuid(), "other");
    EXPECT_EQ(attachments.count(), 1);
    state().study().clearActiveStudyNote();
    EXPECT_EQ(attachments.count(), 0);
}

TEST_F(StudyClipTest, ANoteStudiedBeforeThePanelHasItsClipToo) {
    state().study().setActiveNote(QUuid::createUuid(), "body");
    clip();
    EXPECT_EQ(attachments.count(), 1);
}

TEST_F(StudyClipTest, TakingItOffEndsTheStudy) {
    clip();
    state().study().setActiveNote(QUuid::createUuid(), "body");
    attachments.removeAt(0);
    EXPECT_FALSE(state().study().activeStudyNoteID());
    EXPECT_FALSE(clip().note());
}

TEST_F(StudyClipTest, ItIsNewsUntilItWasSent) {
    clip();
    const QUuid id = QUuid::createUuid();
    state().study().setActiveNote(id, "body");
    const PromptAttachment held = attachments.attachments()[0];
    EXPECT_TRUE(clip().isNews(held));
    clip().setSent(std::nullopt);
    EXPECT_TRUE(clip().isNews(held)) << "the prompt itself has loaded it";
    clip().setSent(id);
    EXPECT_FALSE(clip().isNews(held));
    EXPECT_TRUE(clip().isNews(PromptAttachment{}));
}

} // namespace
} // namespace vorq
