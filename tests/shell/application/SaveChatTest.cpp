// How the user keeps the conversation in their notes from the menu.

#include "doubles/backend/Awaiting.h"
#include "doubles/shell/ShellFixture.h"

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SaveChatTest : public ShellFixture {
  protected:
    SaveChatTest() { launch(); }

    // The notes application answers later.
    void chooseAndWait(int calls) {
        emit m_statusItem.chosen(StatusCommand::SaveChat);
        EXPECT_TRUE(turnUntil([&] { return m_calls.size() >= calls; }));
    }
};

TEST_F(SaveChatTest, TheLastReplyBecomesANote) {
    submit("a question");
    reply(exchange(), "The answer.");
    chooseAndWait(1);
    ASSERT_THAT(m_notesApplication.notes, SizeIs(1));
    EXPECT_EQ(m_notesApplication.notes.front().second, "The answer.");
    EXPECT_THAT(m_calls, ElementsAre("flash check"));
}

TEST_F(SaveChatTest, AFailureIsSeenAndSaysWhy) {
    m_notesApplication.refusal = "The notes application does not answer.";
    submit("a question");
    chooseAndWait(2);
    EXPECT_THAT(m_calls, ElementsAre("flash fail", "alert"));
    EXPECT_EQ(m_host.lastAlert,
              (Alert{"Couldn’t save to Notes.", "The notes application does not answer.", {"OK"}}));
}

TEST_F(SaveChatTest, TheWordOnAFailureKeepsThePanelUpUntilItIsRead) {
    m_notesApplication.refusal = "The notes application does not answer.";
    submit("a question");
    m_delegate.showPanel();
    chooseAndWait(3);
    press(1);
    EXPECT_THAT(m_calls, ElementsAre("show", "flash fail", "alert")) << "the hot key hides nothing";
    EXPECT_TRUE(m_delegate.holds().isHeld()) << "nor does a press on the alert";
    m_host.answer(0);
    EXPECT_FALSE(m_delegate.holds().isHeld());
    press(1);
    EXPECT_THAT(m_calls, ElementsAre("show", "flash fail", "alert", "show", "hide"));
}

TEST_F(SaveChatTest, WithNothingToSaveNothingHappens) {
    emit m_statusItem.chosen(StatusCommand::SaveChat);
    m_clock.settle();
    EXPECT_THAT(m_calls, IsEmpty());
    EXPECT_THAT(m_notesApplication.notes, IsEmpty());
}

} // namespace
} // namespace vorq
