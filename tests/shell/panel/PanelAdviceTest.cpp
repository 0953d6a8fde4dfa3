#include "shell/panel/PanelAdvice.h"

#include "doubles/panel/ConversationFixture.h"
#include "panel/SummonedPanel.h"
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

    struct : SummonedPanel {
        bool up = false;
        [[nodiscard]] bool isUp() const override { return up; }
        [[nodiscard]] bool hasDialog() const override { return false; }
        void bringUp() override { up = true; }
        void takeDown() override { up = false; }
    } m_panel;

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

TEST_F(PanelAdviceTest, SaysEachTimeWhatKeepsAnApplicationFromBeingRead) {
    const auto summonOver = [this](ProcessId source) {
        state().hotKeyContext().press(m_panel, source);
        m_panel.up = false;
        m_clock.settle();
    };
    m_capture.names[7] = "Mousepad";
    advice();
    summonOver(7);
    EXPECT_EQ(advice().sentence(), "") << "who opens an empty panel may want to write";
    for (const auto& [miss, sentence] :
         {std::pair{CaptureMiss::NoAnswer,
                    "Nothing was read from Mousepad, which does not answer."},
          std::pair{CaptureMiss::Excluded, "Nothing was read from Mousepad, which is excluded."},
          std::pair{CaptureMiss::NoAnswer,
                    "Nothing was read from Mousepad, which does not answer."}}) {
        m_capture.misses[7] = miss;
        summonOver(7);
        EXPECT_EQ(advice().sentence(), sentence);
    }
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
