#include "panel/PanelTranscript.h"

#include "platform/testing/ManualClock.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::SizeIs;

class PanelTranscriptTest : public testing::Test {
  protected:
    ~PanelTranscriptTest() override { m_clock.settle(); }

    [[nodiscard]] const std::vector<VorqMessage>& messages() {
        return m_transcript.messages().messages();
    }
    [[nodiscard]] const VorqMessage& of(const QUuid& id) {
        return *m_transcript.messages().find(id);
    }

    ManualClock m_clock;
    PanelTranscript m_transcript{m_clock};
};

TEST_F(PanelTranscriptTest, APlaceholderIsATurnUntilItIsDropped) {
    const QUuid id = m_transcript.appendPlaceholder();
    EXPECT_TRUE(m_transcript.isTurnInFlight());
    m_clock.advance(650ms);
    EXPECT_EQ(m_transcript.workStatus().status(), VorqWorkStatus::Analyzing);
    m_transcript.dropWorkingPlaceholder(id);
    EXPECT_FALSE(m_transcript.isTurnInFlight());
    EXPECT_EQ(m_transcript.workStatus().status(), VorqWorkStatus::Working);
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(PanelTranscriptTest, WhatHasComeOfAReplyIsNotDropped) {
    const QUuid id = m_transcript.appendPlaceholder();
    m_transcript.applyStreamingAssistantText("A paragraph.\n\nAnother", id);
    m_transcript.dropWorkingPlaceholder(id);
    EXPECT_EQ(of(id).text, "A paragraph.");
}

TEST_F(PanelTranscriptTest, AReplyThatShowsDoesNotShrink) {
    const QUuid id = m_transcript.appendPlaceholder();
    m_transcript.applyStreamingAssistantText("One.\n\nTwo.\n\nThree", id);
    const QString shown = of(id).text;
    m_transcript.applyStreamingAssistantText("One.\n\nTwo", id);
    EXPECT_EQ(of(id).text, shown);
}

TEST_F(PanelTranscriptTest, MarksABubbleWithWhatWentOutButNotWithNothing) {
    const QUuid bubble = m_transcript.appendUserMessage("why?");
    m_transcript.rememberSent(bubble, "", "Editor");
    EXPECT_EQ(of(bubble).sent, std::nullopt);
    m_transcript.rememberSent(bubble, "a passage", "Editor");
    EXPECT_EQ(of(bubble).sent, (SentText{"a passage", "Editor"}));
}

TEST_F(PanelTranscriptTest, AFailedReplyIsWaitedForInItsPlace) {
    m_transcript.appendUserMessage("one");
    const QUuid failed = m_transcript.appendPlaceholder();
    m_transcript.markAsNotice(failed);
    m_transcript.finishStreamingAssistantText("Gone.", std::nullopt, failed);
    m_transcript.offerRetry(failed);
    m_transcript.appendUserMessage("two");
    EXPECT_TRUE(of(failed).canRetry);
    m_transcript.awaitAgain(failed);
    EXPECT_EQ(messages()[1].id, failed);
    EXPECT_TRUE(messages()[1].isWorking);
    EXPECT_FALSE(messages()[1].canRetry);
    EXPECT_FALSE(messages()[1].isNotice);
}

TEST_F(PanelTranscriptTest, AMessageThatIsGoneChangesNothing) {
    const QUuid gone = QUuid::createUuid();
    m_transcript.rememberSent(gone, "text", "");
    m_transcript.markAsNotice(gone);
    m_transcript.offerRetry(gone);
    m_transcript.awaitAgain(gone);
    m_transcript.applyStreamingAssistantText("Text.", gone);
    m_transcript.finishStreamingAssistantText("Text.", std::nullopt, gone);
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(PanelTranscriptTest, StoppedItLeavesNothingThatWaitsOrGrows) {
    m_transcript.appendUserMessage("one");
    const QUuid streamed = m_transcript.appendPlaceholder();
    m_transcript.applyStreamingAssistantText("A paragraph.\n\nAnother", streamed);
    m_transcript.appendPlaceholder();
    m_transcript.stop();
    EXPECT_THAT(messages(), SizeIs(2));
    EXPECT_FALSE(m_transcript.isTurnInFlight());
}

TEST_F(PanelTranscriptTest, HasTextOnceAMessageIsNoPlaceholder) {
    m_transcript.appendPlaceholder();
    m_transcript.appendUserMessage("  \n");
    EXPECT_FALSE(m_transcript.hasText());
    m_transcript.appendUserMessage("one");
    EXPECT_TRUE(m_transcript.hasText());
}

} // namespace
} // namespace vorq
