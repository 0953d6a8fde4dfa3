// What the hot key takes up from the application in front.

#include "doubles/panel/ConversationFixture.h"
#include "support/async/TaskSlot.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class HotKeyContextTest : public ConversationFixture {
  protected:
    void press(std::optional<ProcessId> source, std::optional<QString> prefilled = {}) {
        m_task.restart([this, source, prefilled](std::stop_token stop) {
            return state().hotKeyContext().submitHotKeyContext(source, prefilled, std::move(stop));
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
    EXPECT_THAT(texts(), ElementsAre(u"Hello 👋, Vorq here…"_s));
    EXPECT_EQ(state().permissions().permissionMessage(), "");
    EXPECT_THAT(m_capture.lines, ElementsAre("trusted=true perm=pending pid=nil app=- chars=0"));
}

TEST_F(HotKeyContextTest, WithoutTrustItAdvisesToGrantAgain) {
    m_capture.trusted = false;
    press(7);
    EXPECT_THAT(m_capture.asked, IsEmpty());
    EXPECT_TRUE(state().permissions().permissionMessage().startsWith(
        u"If Vorq already looks enabled in System Settings, select it, click − to "
        "remove, then Enable again here. Quit Vorq (⌘Q) and reopen so the new "
        "grant applies to: "_s));
    m_capture.frontmost = 9;
    m_capture.selections[9] = "readable after all";
    press(7);
    EXPECT_EQ(state().permissions().permissionMessage(), "");
}

TEST_F(HotKeyContextTest, AStoppedCaptureChangesNothing) {
    m_capture.selections[7] = "captured";
    m_task.restart([this](std::stop_token stop) {
        return state().hotKeyContext().submitHotKeyContext(7, std::nullopt, std::move(stop));
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

// A capture that reads like a secret.
class HeldCaptureTest : public HotKeyContextTest {
  protected:
    const QString secret = u"kT4vB9nQz2Lm"_s;

    HeldCaptureTest() {
        panel().setHighlightedText("older");
        m_capture.selections[7] = secret;
        m_capture.readsLikeSecret = true;
        press(7);
    }
    [[nodiscard]] HeldCapture& held() { return state().hotKeyContext().held(); }
    [[nodiscard]] bool isHeld() { return !held().isEmpty(); }
};

TEST_F(HeldCaptureTest, WaitsAndIsInNoMessageNoContextAndNoLog) {
    EXPECT_TRUE(isHeld());
    EXPECT_EQ(held().application(), "Editor");
    EXPECT_THAT(messages(), IsEmpty());
    EXPECT_EQ(panel().highlightedText(), "");
    EXPECT_EQ(m_transport.count(), 0U);
    EXPECT_THAT(m_capture.lines,
                ElementsAre("trusted=true perm=pending pid=7 app=Editor chars=held"));
    EXPECT_FALSE(panel().canSaveCurrentChat());
}

TEST_F(HeldCaptureTest, DoesNotGoAlongWithAPrompt) {
    submit("A question");
    EXPECT_FALSE(exchange().request().body.value_or(QByteArray()).contains(secret.toUtf8()));
    EXPECT_TRUE(isHeld());
}

TEST_F(HeldCaptureTest, IsAnalysedOnceTheUserSendsIt) {
    state().hotKeyContext().sendHeld();
    m_clock.settle();
    EXPECT_FALSE(isHeld());
    EXPECT_EQ(exchange().path(), "/ai/analyze");
    EXPECT_EQ(exchange().json()["text"], secret);
    EXPECT_EQ(panel().highlightedText(), secret);
    EXPECT_THAT(texts(), ElementsAre("Attached: Text capture", "Working..."));
    state().hotKeyContext().sendHeld();
    m_clock.settle();
    EXPECT_THAT(messages(), SizeIs(2)) << "it is sent once";
}

TEST_F(HeldCaptureTest, IsGoneOnceItIsDiscarded) {
    held().discard();
    state().hotKeyContext().sendHeld();
    m_clock.settle();
    EXPECT_FALSE(isHeld());
    EXPECT_EQ(m_transport.count(), 0U);
}

TEST_F(HeldCaptureTest, GoesWithTheConversationThatIsCleared) {
    panel().clearPanelChat();
    EXPECT_FALSE(isHeld());
}

TEST_F(HeldCaptureTest, MakesWayForTheNextCapture) {
    m_capture.selections[7] = "xY7_qBcD3F12-gH";
    press(7);
    EXPECT_EQ(held().release(), "xY7_qBcD3F12-gH");

    press(7);
    m_capture.selections[7] = "a passage";
    m_capture.readsLikeSecret = false;
    press(7);
    EXPECT_FALSE(isHeld());
    EXPECT_EQ(exchange().json()["text"], "a passage");

    m_capture.readsLikeSecret = true;
    press(7);
    EXPECT_TRUE(isHeld());
    m_capture.selections.clear();
    press(7);
    EXPECT_FALSE(isHeld());
}

TEST_F(HotKeyContextTest, TheStateGoneDuringTheCaptureIsNoHarm) {
    m_capture.selections[7] = "captured";
    m_task.restart([this](std::stop_token stop) -> QCoro::Task<> {
        auto capture = state().hotKeyContext().submitHotKeyContext(7, std::nullopt, stop);
        m_tester.reset();
        m_state.reset();
        co_await capture;
    });
    m_clock.settle();
    EXPECT_EQ(m_state, nullptr);
}

} // namespace
} // namespace vorq
