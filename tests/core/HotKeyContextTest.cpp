// What the hot key takes up from the application in front.

#include "core/ConversationFixture.h"
#include "support/TaskSlot.h"

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class HotKeyContextTest : public ConversationFixture {
  protected:
    void press(std::optional<SelectionCapture::ProcessId> source,
               std::optional<QString> prefilled = {}) {
        m_task.restart([this, source, prefilled](std::stop_token stop) {
            return panel().submitHotKeyContext(source, prefilled, std::move(stop));
        });
        m_clock.settle();
    }

    TaskSlot m_task;
};

TEST_F(HotKeyContextTest, AnalysesWhatTheSourceHasHighlighted) {
    m_capture.selections[7] = " captured text \n";
    press(7);
    EXPECT_EQ(panel().highlightedText(), "captured text");
    EXPECT_THAT(texts(), ElementsAre("Attached: Text capture", "Working..."));
    EXPECT_EQ(exchange().path(), "/ai/analyze");
    EXPECT_EQ(exchange().json()["text"], "captured text");
    EXPECT_THAT(m_capture.lines,
                ElementsAre("trusted=true perm=pending pid=7 app=Editor chars=13"));
}

TEST_F(HotKeyContextTest, TakesATextThatIsGivenInstead) {
    m_capture.selections[7] = "captured";
    press(7, " given ");
    EXPECT_EQ(panel().highlightedText(), "given");
    EXPECT_THAT(m_capture.asked, IsEmpty());
}

TEST_F(HotKeyContextTest, TriesTheFrontmostApplicationIfTheSourceHasNothing) {
    m_capture.frontmost = 9;
    m_capture.selections[9] = "from another";
    press(7);
    EXPECT_THAT(m_capture.asked, ElementsAre(7, 9));
    EXPECT_EQ(panel().highlightedText(), "from another");
}

TEST_F(HotKeyContextTest, DoesNotAskTheSameApplicationTwice) {
    m_capture.frontmost = 7;
    press(7);
    EXPECT_THAT(m_capture.asked, ElementsAre(7));
}

TEST_F(HotKeyContextTest, NothingCapturedShowsTheGreetingWithoutAdvice) {
    panel().setHighlightedText("older");
    press(std::nullopt);
    advance(2s);
    EXPECT_EQ(panel().highlightedText(), "");
    EXPECT_THAT(texts(), ElementsAre(QStringLiteral("Hello 👋, Vorq here…")));
    EXPECT_EQ(state().permissions().permissionMessage(), "");
    EXPECT_THAT(m_capture.lines, ElementsAre("trusted=true perm=pending pid=nil app=- chars=0"));
}

TEST_F(HotKeyContextTest, WithoutTrustItAdvisesToGrantAgain) {
    m_capture.trusted = false;
    press(7);
    EXPECT_THAT(m_capture.asked, IsEmpty());
    EXPECT_TRUE(state().permissions().permissionMessage().startsWith(
        QStringLiteral("If Vorq already looks enabled in System Settings, select it, click − to "
                       "remove, then Enable again here. Quit Vorq (⌘Q) and reopen so the new "
                       "grant applies to: ")));
    m_capture.frontmost = 9;
    m_capture.selections[9] = "readable after all";
    press(7);
    EXPECT_EQ(state().permissions().permissionMessage(), "");
}

TEST_F(HotKeyContextTest, AStoppedCaptureChangesNothing) {
    m_capture.selections[7] = "captured";
    m_task.restart([this](std::stop_token stop) {
        return panel().submitHotKeyContext(7, std::nullopt, std::move(stop));
    });
    m_task.cancel();
    m_clock.settle();
    EXPECT_THAT(messages(), SizeIs(0));
}

TEST_F(HotKeyContextTest, ABlankTextGivenCapturesNothingInstead) {
    m_capture.frontmost = 9;
    m_capture.selections[9] = "from another";
    press(7, " \n");
    EXPECT_THAT(m_capture.asked, IsEmpty());
    EXPECT_EQ(panel().highlightedText(), "");
}

TEST_F(HotKeyContextTest, TheStateGoneDuringTheCaptureIsNoHarm) {
    m_capture.selections[7] = "captured";
    m_task.restart([this](std::stop_token stop) -> QCoro::Task<> {
        auto capture = panel().submitHotKeyContext(7, std::nullopt, stop);
        m_tester.reset();
        m_state.reset();
        co_await capture;
    });
    m_clock.settle();
    EXPECT_EQ(m_state, nullptr);
}

} // namespace
} // namespace vorq
