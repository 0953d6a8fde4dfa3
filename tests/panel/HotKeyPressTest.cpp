// Presses of the panel's hot key: the panel, slow captures, and presses beside each other.

#include "doubles/panel/ConversationFixture.h"
#include "panel/SummonedPanel.h"

#include <algorithm>
#include <random>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class ScriptedPanel final : public SummonedPanel {
  public:
    bool up = false;
    bool dialog = false;
    QStringList calls;

    [[nodiscard]] bool isUp() const override { return up; }
    [[nodiscard]] bool hasDialog() const override { return dialog; }
    void bringUp() override {
        up = true;
        calls += "up";
    }
    void takeDown() override {
        up = false;
        calls += "down";
    }
};

class HotKeyPressTest : public ConversationFixture {
  protected:
    HotKeyPressTest() {
        m_capture.clock = &m_clock;
        m_capture.takes = 100ms;
    }

    void press(ProcessId source) { hotKey().press(*m_panel, source); }
    [[nodiscard]] HotKeyContext& hotKey() { return state().hotKeyContext(); }

    std::unique_ptr<ScriptedPanel> m_panel = std::make_unique<ScriptedPanel>();
};

TEST_F(HotKeyPressTest, ThePanelIsUpBeforeAnythingIsCaptured) {
    press(7);
    m_clock.settle();
    EXPECT_TRUE(m_panel->up);
    EXPECT_THAT(m_capture.asked, ElementsAre(7));
    EXPECT_EQ(m_capture.underWay, 1);
}

TEST_F(HotKeyPressTest, ATextIsTakenUpWhenTheCaptureEnds) {
    m_capture.selections[7] = "a passage";
    press(7);
    advance(99ms);
    EXPECT_EQ(panel().highlightedText(), "");
    advance(1ms);
    EXPECT_EQ(panel().highlightedText(), "a passage");
    EXPECT_EQ(exchange().json()["text"], "a passage");
}

TEST_F(HotKeyPressTest, APressDuringASlowCaptureHidesThePanelOnlyAfterIt) {
    press(7);
    advance(50ms);
    press(7);
    advance(50ms);
    EXPECT_TRUE(m_panel->up);
    advance(100ms);
    EXPECT_FALSE(m_panel->up);
}

TEST_F(HotKeyPressTest, ImpatientPressesAskOnce) {
    m_capture.selections[7] = "a passage";
    for (int time = 0; time < 5; ++time) {
        press(7);
        advance(60ms);
    }
    advance(1s);
    EXPECT_EQ(m_transport.count(), 1U);
    EXPECT_TRUE(m_panel->up);
    EXPECT_EQ(m_capture.underWay, 0);
}

TEST_F(HotKeyPressTest, WhatIsHighlightedMeanwhileIsAskedAboutAsWell) {
    m_capture.selections[7] = "a passage";
    press(7);
    advance(50ms);
    press(7);
    m_capture.selections[7] = "another";
    advance(1s);
    EXPECT_EQ(panel().highlightedText(), "another");
}

TEST_F(HotKeyPressTest, EscapeDuringASlowCaptureHidesWhatReadsLikeASecret) {
    m_capture.selections[7] = "kT4vB9nQz2Lm";
    m_capture.readsLikeSecret = true;
    press(7);
    advance(50ms);
    m_panel->up = false;
    advance(1s);
    EXPECT_TRUE(hotKey().held().isEmpty());
    EXPECT_EQ(m_transport.count(), 0U);
}

TEST_F(HotKeyPressTest, WhoAsksDuringTheCaptureIsNotToldThatNothingIsHighlighted) {
    int told = 0;
    QObject::connect(&hotKey(), &HotKeyContext::nothingCaptured, &hotKey(), [&told] { ++told; });
    press(7);
    advance(50ms);
    panel().submit("a question");
    advance(50ms);
    EXPECT_EQ(m_capture.underWay, 0);
    EXPECT_EQ(told, 0);

    m_panel->up = false;
    press(7);
    advance(100ms);
    EXPECT_EQ(told, 1) << "beside what was said before";
}

TEST_F(HotKeyPressTest, AnEmptyCaptureLeavesADialogOpen) {
    m_panel->up = true;
    m_panel->dialog = true;
    press(7);
    advance(1s);
    EXPECT_THAT(m_panel->calls, IsEmpty());
}

TEST_F(HotKeyPressTest, APanelThatGoesDuringTheCaptureLeavesTheConversationAlone) {
    m_capture.selections[7] = "a passage";
    press(7);
    press(7);
    advance(50ms);
    m_panel.reset();
    advance(1s);
    EXPECT_EQ(panel().highlightedText(), "");
    EXPECT_THAT(m_capture.asked, ElementsAre(7)) << "the press that waited is for nobody";
}

TEST_F(HotKeyPressTest, TheStateThatGoesDuringTheCaptureStopsIt) {
    press(7);
    advance(50ms);
    m_tester.reset();
    m_state.reset();
    m_clock.settle();
    EXPECT_EQ(m_capture.underWay, 0);
    EXPECT_EQ(m_clock.pendingTimers(), 0U);
}

// Whatever the user does, in whatever order: captures come one by one, none hangs, and what one
// found is taken up once. Each press is over an application of its own, so that its text is known.
class RandomPressesTest : public HotKeyPressTest {
  protected:
    void run(unsigned seed) {
        m_random.seed(seed);
        begin();
        for (int step = 0; step < 60; ++step)
            doAnything();
        settleDown();
        SCOPED_TRACE("sequence " + std::to_string(seed) + ": " + m_steps.join(' ').toStdString());
        expectNothingHangs();
        expectEachIsAskedOnceInOrder();
        expectEachTextIsTakenUpOnce();
    }

  private:
    [[nodiscard]] unsigned below(unsigned limit) {
        return static_cast<unsigned>(m_random() % limit);
    }
    [[nodiscard]] QString textOf(ProcessId source) const { return m_capture.selections.at(source); }

    void begin() {
        m_panel = std::make_unique<ScriptedPanel>();
        m_capture.asked.clear();
        m_capture.selections.clear();
        m_capture.secrets.clear();
        m_capture.most = 0;
        m_taken.clear();
        m_steps.clear();
        m_forNobody.clear();
        m_takenBefore.clear();
        m_newest = 0;
        m_first = m_last + 1;
        restart();
        QObject::connect(&hotKey(), &HotKeyContext::textCaptured, &hotKey(),
                         [this] { m_taken += panel().highlightedText(); });
        QObject::connect(&hotKey().held(), &HeldCapture::changed, &hotKey(), [this] {
            if (!hotKey().held().isEmpty()) EXPECT_TRUE(m_panel->up) << "a secret waits unseen";
        });
    }

    void doAnything() {
        static constexpr std::array user{
            &RandomPressesTest::pressKey,     &RandomPressesTest::pressKey,
            &RandomPressesTest::pressKey,     &RandomPressesTest::escape,
            &RandomPressesTest::openDialog,   &RandomPressesTest::closeDialog,
            &RandomPressesTest::sendHeld,     &RandomPressesTest::discardHeld,
            &RandomPressesTest::clearChat,    &RandomPressesTest::stopReply,
            &RandomPressesTest::ask,          &RandomPressesTest::changePace,
            &RandomPressesTest::replacePanel,
        };
        (this->*user[below(user.size())])();
        // Some things happen before the event loop turns.
        if (below(3) != 0) wait();
    }
    void pressKey() {
        const ProcessId source = ++m_last;
        m_newest = source;
        if (below(3) != 0) m_capture.selections[source] = "text " + QString::number(source);
        if (below(4) == 0) m_capture.secrets.insert(source);
        m_steps += "press" + QString::number(source);
        press(source);
    }
    // As the window does when it loses the focus, too; what is held goes with it.
    void escape() {
        m_steps += "escape";
        if (m_panel->dialog) return;
        m_panel->up = false;
        hotKey().held().discard();
    }
    void openDialog() {
        m_steps += "dialog";
        m_panel->dialog = m_panel->up;
    }
    void closeDialog() {
        m_steps += "answer";
        m_panel->dialog = false;
    }
    void sendHeld() {
        m_steps += "send";
        if (!hotKey().held().isEmpty()) ++m_heldSent;
        hotKey().sendHeld();
    }
    void discardHeld() {
        m_steps += "discard";
        hotKey().held().discard();
    }
    void clearChat() {
        m_steps += "clear";
        panel().clearPanelChat();
        EXPECT_TRUE(hotKey().held().isEmpty());
    }
    void stopReply() {
        m_steps += "stop";
        panel().stopPanelResponse();
    }
    void ask() {
        m_steps += "ask";
        panel().submit("a question");
    }
    void changePace() {
        static constexpr std::array paces{0ms, 5ms, 100ms, 250ms};
        m_capture.takes = paces[below(paces.size())];
        m_steps += "pace" + QString::number(m_capture.takes.count());
    }
    // What is not taken up by now is for nobody.
    void replacePanel() {
        if (below(4) != 0) return;
        m_steps += "new panel";
        for (const auto& [source, text] : m_capture.selections)
            m_takenBefore.emplace(source, m_taken.contains(text));
        for (ProcessId source = m_first; source <= m_last; ++source)
            m_forNobody.insert(source);
        m_panel = std::make_unique<ScriptedPanel>();
        hotKey().held().discard();
    }
    void wait() {
        static constexpr std::array spans{0ms, 1ms, 30ms, 100ms, 260ms, 3000ms};
        const auto span = spans[below(spans.size())];
        m_steps += QString::number(span.count());
        m_clock.advance(span);
    }

    // The user goes away. Two captures may be left: the one under way, and the newest press.
    void settleDown() {
        m_clock.advance(600ms);
        EXPECT_EQ(m_capture.underWay, 0);
        for (int turn = 0; turn < 200 && panel().isPanelResponding(); ++turn)
            m_clock.advance(95s);
    }

    void expectNothingHangs() {
        EXPECT_LE(m_capture.most, 1) << "two captures at once";
        EXPECT_FALSE(panel().isPanelResponding());
        EXPECT_EQ(panel().queuedTurns(), 0U);
        if (m_newest == 0 || m_forNobody.contains(m_newest)) return;
        EXPECT_EQ(m_capture.asked.back(), m_newest) << "the newest press counts";
    }
    void expectEachIsAskedOnceInOrder() {
        for (std::size_t index = 1; index < m_capture.asked.size(); ++index)
            EXPECT_LT(m_capture.asked[index - 1], m_capture.asked[index]);
    }
    void expectEachTextIsTakenUpOnce() {
        for (const std::optional<ProcessId> source : m_capture.asked) {
            if (!source || !m_capture.selections.contains(*source)) continue;
            const auto count = m_taken.count(textOf(*source));
            if (m_capture.secrets.contains(*source) || m_forNobody.contains(*source))
                EXPECT_LE(count, 1) << *source;
            else
                EXPECT_EQ(count, 1) << *source;
        }
        for (const auto& [source, taken] : m_takenBefore)
            EXPECT_EQ(m_taken.contains(textOf(source)), taken) << source << " was for nobody";
        EXPECT_EQ(m_taken.removeDuplicates(), 0);
        EXPECT_EQ(std::ranges::count_if(m_capture.secrets,
                                        [this](ProcessId source) {
                                            return m_capture.selections.contains(source) &&
                                                   m_taken.contains(textOf(source));
                                        }),
                  std::exchange(m_heldSent, 0))
            << "a secret is taken up by the user's word alone";
    }

    std::mt19937 m_random;
    ProcessId m_last = 100;
    ProcessId m_first = 0; // of this sequence
    ProcessId m_newest = 0;
    std::ptrdiff_t m_heldSent = 0;
    QStringList m_taken;
    std::set<ProcessId> m_forNobody;         // pressed for a panel that went
    std::map<ProcessId, bool> m_takenBefore; // whether it was, when the panel went
    QStringList m_steps;
};

TEST_F(RandomPressesTest, NothingHangsNothingIsLostAndNothingIsTakenUpTwice) {
    for (unsigned seed = 1; seed <= 150 && !HasFailure(); ++seed)
        run(seed);
}

} // namespace
} // namespace vorq
