#include "panel/PanelGreeting.h"

#include "panel/PanelTranscript.h"
#include "platform/testing/ManualClock.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::SizeIs;

class PanelGreetingTest : public testing::Test {
  protected:
    ~PanelGreetingTest() override { m_clock.settle(); }

    [[nodiscard]] const std::vector<VorqMessage>& messages() {
        return m_transcript.messages().messages();
    }

    ManualClock m_clock;
    PanelTranscript m_transcript{m_clock};
    PanelGreeting m_greeting{m_transcript};
};

TEST_F(PanelGreetingTest, IsTypedIntoAnEmptyConversation) {
    m_greeting.ensure();
    ASSERT_THAT(messages(), SizeIs(1));
    EXPECT_EQ(messages().front().text, "");
    EXPECT_TRUE(messages().front().isNotice);
    m_clock.advance(300ms);
    EXPECT_TRUE(messages().front().isTyping);
    m_clock.advance(2s);
    EXPECT_EQ(messages().front().text, u"Hello 👋, Vorq here…"_s);
    EXPECT_FALSE(messages().front().isTyping);
}

TEST_F(PanelGreetingTest, IsNoTurnHoweverFarItIsTyped) {
    m_greeting.ensure();
    for (int step = 0; step < 30; ++step) {
        EXPECT_FALSE(m_transcript.isTurnInFlight());
        EXPECT_TRUE(m_greeting.isAlone());
        m_clock.advance(33ms);
    }
}

TEST_F(PanelGreetingTest, IsNotRepeated) {
    m_greeting.ensure();
    m_greeting.ensure();
    EXPECT_THAT(messages(), SizeIs(1));
}

TEST_F(PanelGreetingTest, StaysAwayFromAConversationThatHoldsAnything) {
    m_transcript.appendPlaceholder();
    m_greeting.ensure();
    EXPECT_THAT(messages(), SizeIs(1));
    EXPECT_FALSE(m_greeting.isAlone());
}

TEST_F(PanelGreetingTest, IsNotAloneBesideAPrompt) {
    EXPECT_FALSE(m_greeting.isAlone());
    m_greeting.ensure();
    m_transcript.appendUserMessage("a question");
    EXPECT_FALSE(m_greeting.isAlone());
    EXPECT_TRUE(m_transcript.isTurnInFlight()) << "it is still being typed";
}

} // namespace
} // namespace vorq
