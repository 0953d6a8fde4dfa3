#include "shell/panel/PanelAdvice.h"

#include "doubles/panel/ConversationFixture.h"
#include "platform/testing/ScriptedPermissionProbe.h"
#include "shell/notices/Advice.h"

namespace vorq {
namespace {

class PanelAdviceTest : public ConversationFixture {
  protected:
    ~PanelAdviceTest() override { m_advice.reset(); }

    PanelAdvice& advice() {
        if (!m_advice) m_advice = std::make_unique<PanelAdvice>(state());
        return *m_advice;
    }

  private:
    std::unique_ptr<PanelAdvice> m_advice;
};

TEST_F(PanelAdviceTest, SaysEachTimeWhyNothingWasReadUntilItCanBe) {
    ScriptedPermissionProbe probe;
    Permissions& permissions = state().permissions();
    permissions.setProbe(&probe);
    ASSERT_EQ(advice().sentence(), "");
    permissions.adviseToGrantAgain();
    EXPECT_EQ(advice().sentence(), accessibilityAdvice());
    advice().clear();
    EXPECT_EQ(advice().sentence(), "");
    permissions.adviseToGrantAgain();
    EXPECT_EQ(advice().sentence(), accessibilityAdvice());
    probe.text = PermissionState::Granted;
    permissions.refreshPermissions();
    EXPECT_EQ(advice().sentence(), "");
}

TEST_F(PanelAdviceTest, SaysHowToSignInWhenWhatWasHighlightedGetsNoReply) {
    advice();
    state().account().signOut();
    state().panel().submit("Attached text");
    m_clock.settle();
    EXPECT_EQ(advice().sentence(), signInAdvice());
    ASSERT_EQ(messages().size(), 1U) << "there is no bubble";
}

} // namespace
} // namespace vorq
