// How the user has Vorq taken off the machine, and signs out.

#include "doubles/shell/ShellFixture.h"

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DeleteVorqTest : public ShellFixture {
  protected:
    DeleteVorqTest() { launch(); }
};

TEST_F(DeleteVorqTest, AsksFirst) {
    emit m_statusItem.chosen(StatusCommand::DeleteVorq);
    EXPECT_EQ(
        m_host.lastAlert,
        (Alert{"Delete Vorq?",
               "This moves Vorq to the Trash and quits. Vorq won’t appear in Applications "
               "anymore — reinstall anytime from the website.\n\nYour saved notes and chats, "
               "your tasks and trackers, and the accounts of a local backend go to the trash "
               "with it. Settings, sign-in and the start at login are removed for good. Notes "
               "in other applications stay.",
               {"Delete Vorq", "Cancel"}}));
    EXPECT_THAT(m_calls, ElementsAre("alert"));
    m_host.answer(1);
    EXPECT_THAT(m_calls, ElementsAre("alert"));
}

TEST_F(DeleteVorqTest, EndsToBeDeletedOnceTheUserAgrees) {
    emit m_statusItem.chosen(StatusCommand::DeleteVorq);
    m_host.answer(0);
    EXPECT_THAT(m_calls, ElementsAre("alert", "terminate and delete"));
}

TEST_F(DeleteVorqTest, AskedOfAShellThatIsGoneNothingHappens) {
    auto shell = std::make_unique<AppDelegate>(ports());
    shell->deleteVorqFromMenu();
    shell.reset();
    m_calls.clear();
    m_host.answer(0);
    EXPECT_THAT(m_calls, IsEmpty());
}

TEST_F(DeleteVorqTest, SigningOutIsThereForThoseWhoOnlyWantThat) {
    ASSERT_TRUE(state().account().signedIn());
    emit m_statusItem.chosen(StatusCommand::SignOut);
    EXPECT_FALSE(state().account().signedIn());
}

} // namespace
} // namespace vorq
