// Several turns: waiting, stopping, clearing, and replacing each other.

#include "doubles/panel/ConversationFixture.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::SizeIs;

using QueueTest = ConversationFixture;

const QString greeting = u"Hello 👋, Vorq here…"_s;

TEST_F(QueueTest, TwoQuickPromptsShowTwoBubblesAndAreAnsweredInOrder) {
    submit("one");
    submit("two");
    EXPECT_THAT(texts(), ElementsAre("one", "Working...", "two"));
    EXPECT_EQ(m_transport.count(), 1u);
    EXPECT_EQ(panel().queuedTurns(), 1u);
    reply(m_transport.at(0), "First.");
    ASSERT_EQ(m_transport.count(), 2u);
    EXPECT_THAT(texts(), ElementsAre("one", "First.", "two", "Working..."));
    reply(m_transport.at(1), "Second.");
    EXPECT_THAT(texts(), ElementsAre("one", "First.", "two", "Second."));
    EXPECT_FALSE(panel().isPanelTurnInFlight());
}

TEST_F(QueueTest, AQueuedTurnWaitsUntilTheReplyIsTypedToItsEnd) {
    submit("one");
    submit("two");
    reply(m_transport.at(0), threeParagraphs);
    advance(459ms);
    EXPECT_EQ(m_transport.count(), 1u);
    advance(1ms);
    EXPECT_EQ(m_transport.count(), 2u);
}

TEST_F(QueueTest, TheContextOfAQueuedTurnIsReadWhenItStarts) {
    panel().setHighlightedText("first");
    submit("one");
    submit("two");
    panel().setHighlightedText("second");
    reply(m_transport.at(0), "Done.");
    EXPECT_EQ(m_transport.at(1).json()["selectedText"], "second");
    const QVariantList recent = m_transport.at(1).json()["recentMessages"].toList();
    ASSERT_THAT(recent, SizeIs(3));
    EXPECT_EQ(recent[1].toMap()["content"], "Done.");
    EXPECT_EQ(recent[2].toMap()["content"], "two");
}

TEST_F(QueueTest, ADeepenedSelectionWaitsLikeAPrompt) {
    submit("one");
    panel().deepenSelection("the excerpt", "why?");
    m_clock.settle();
    EXPECT_EQ(m_transport.count(), 1u);
    reply(m_transport.at(0), "Done.");
    EXPECT_EQ(m_transport.at(1).json()["selectedText"], "the excerpt");
}

TEST_F(QueueTest, AFailedTurnLetsTheNextProceed) {
    submit("one");
    submit("two");
    m_transport.at(0).fail("refused");
    m_clock.settle();
    EXPECT_EQ(m_transport.count(), 2u);
}

TEST_F(QueueTest, APromptDuringTheGreetingWaitsForIt) {
    panel().ensurePanelGreeting();
    advance(200ms);
    EXPECT_FALSE(panel().isPanelTurnInFlight()) << "a greeting alone is no turn";
    EXPECT_TRUE(panel().isPanelGreetingOnly());
    submit("one");
    EXPECT_TRUE(panel().isPanelTurnInFlight());
    EXPECT_EQ(m_transport.count(), 0u);
    advance(1s);
    EXPECT_EQ(m_transport.count(), 1u);
    EXPECT_THAT(texts(), ElementsAre(greeting, "one", "Working..."));
    EXPECT_THAT(exchange().json()["recentMessages"].toList(), SizeIs(2));
}

TEST_F(QueueTest, StopDropsWhatWaitsAndKeepsItsBubbles) {
    submit("one");
    submit("two");
    submit("three");
    panel().stopPanelResponse();
    m_clock.settle();
    EXPECT_THAT(texts(), ElementsAre("one", "two", "three"));
    EXPECT_FALSE(panel().isPanelTurnInFlight());
    advance(10s);
    EXPECT_EQ(m_transport.count(), 1u);
    EXPECT_TRUE(m_transport.at(0).isAbandoned());
    EXPECT_EQ(status(), VorqWorkStatus::Working);
}

TEST_F(QueueTest, AfterAStopTheNextPromptGoesOutAtOnce) {
    submit("one");
    panel().stopPanelResponse();
    EXPECT_FALSE(panel().isPanelTurnInFlight());
    submit("two");
    EXPECT_EQ(m_transport.count(), 2u);
    EXPECT_THAT(texts(), ElementsAre("one", "two", "Working..."));
    reply(m_transport.at(1), "Done.");
    EXPECT_THAT(texts(), ElementsAre("one", "two", "Done."));
}

TEST_F(QueueTest, StopKeepsWhatAStreamHasShown) {
    submit("one");
    exchange().begin();
    sendText(exchange(), threeParagraphs);
    panel().stopPanelResponse();
    m_clock.settle();
    EXPECT_EQ(last().text, QString(60, u'a') + "\n\n" + QString(60, u'b'));
    EXPECT_FALSE(last().isTyping);
}

TEST_F(QueueTest, StopCompletesAReplyWhoseWholeTextIsKnown) {
    submit("one");
    reply(exchange(), threeParagraphs);
    advance(220ms);
    panel().stopPanelResponse();
    EXPECT_EQ(last().text, threeParagraphs);
    EXPECT_FALSE(last().isTyping);
    EXPECT_EQ(last().typingFullText, std::nullopt);
}

TEST_F(QueueTest, StopDuringTheFinishingPauseLeavesNoReply) {
    submit("one");
    reply(exchange(), threeParagraphs);
    EXPECT_EQ(status(), VorqWorkStatus::Finishing);
    panel().stopPanelResponse();
    advance(1s);
    EXPECT_THAT(texts(), ElementsAre("one"));
    EXPECT_EQ(status(), VorqWorkStatus::Working);
}

TEST_F(QueueTest, StopBeforeTheTurnBeganSendsNothing) {
    panel().submit("one");
    panel().stopPanelResponse();
    m_clock.settle();
    EXPECT_EQ(m_transport.count(), 0u);
    EXPECT_THAT(texts(), ElementsAre("one"));
}

TEST_F(QueueTest, ClearDuringATurnEndsWithTheGreetingAlone) {
    panel().setHighlightedText("text");
    state().study().setLastStudyResearch("research");
    submit("one");
    submit("two");
    exchange().begin();
    panel().clearPanelChat();
    sendDone(m_transport.at(0), threeParagraphs);
    EXPECT_THAT(messages(), SizeIs(1));
    advance(5s);
    EXPECT_THAT(texts(), ElementsAre(greeting));
    EXPECT_FALSE(last().isTyping);
    EXPECT_EQ(panel().highlightedText(), "");
    EXPECT_EQ(state().study().lastStudyResearch(), "");
    EXPECT_EQ(m_transport.count(), 1u);
}

TEST_F(QueueTest, ClearDuringTheRevealTypesTheGreetingOnly) {
    submit("one");
    reply(exchange(), threeParagraphs);
    advance(220ms);
    panel().clearPanelChat();
    advance(5s);
    EXPECT_THAT(texts(), ElementsAre(greeting));
}

TEST_F(QueueTest, AReplyThatComesAfterTheConversationWasReplacedAddsNothing) {
    submit("one");
    exchange().begin();
    panel().messages().clear();
    sendDone(exchange(), "Late.");
    EXPECT_THAT(messages(), SizeIs(0));
    EXPECT_FALSE(panel().isPanelTurnInFlight());
}

TEST_F(QueueTest, ANewAnalysisLeavesTheReplyBeingTypedToItsReveal) {
    submit("one");
    reply(exchange(), threeParagraphs);
    advance(220ms);
    panel().typeHighlightAndAnalyze("captured");
    m_clock.settle();
    EXPECT_EQ(m_transport.count(), 2u);
    reply(m_transport.at(1), "Analysed.");
    EXPECT_THAT(texts(),
                ElementsAre("one", threeParagraphs, "Attached: Text capture", "Analysed."));
}

TEST_F(QueueTest, ACommandInTheFinishingPauseShowsTheReplyAtOnce) {
    submit("one");
    reply(exchange(), threeParagraphs);
    EXPECT_EQ(status(), VorqWorkStatus::Finishing);
    advance(100ms);
    submit("open library");
    EXPECT_EQ(messages()[1].text, threeParagraphs);
    EXPECT_FALSE(messages()[1].isWorking);
    advance(10s);
    EXPECT_FALSE(panel().isPanelResponding());
    EXPECT_EQ(status(), VorqWorkStatus::Working);
}

TEST_F(QueueTest, AnAnalysisInTheFinishingPauseShowsTheReplyAtOnce) {
    submit("one");
    reply(exchange(), threeParagraphs);
    panel().typeHighlightAndAnalyze("captured");
    m_clock.settle();
    EXPECT_THAT(texts(),
                ElementsAre("one", threeParagraphs, "Attached: Text capture", "Working..."));
    reply(exchange(), "Analysed.");
    advance(10s);
    EXPECT_THAT(texts(),
                ElementsAre("one", threeParagraphs, "Attached: Text capture", "Analysed."));
}

TEST_F(QueueTest, AReplyThatAnAnalysisReplacedEndsThoughTheAnalysisIsSignedOut) {
    submit("one");
    exchange().begin();
    sendText(exchange(), threeParagraphs);
    EXPECT_TRUE(last().isTyping);
    panel().typeHighlightAndAnalyze("captured");
    m_clock.settle();
    refuse(exchange(), 401);
    EXPECT_FALSE(panel().isPanelResponding());
    EXPECT_THAT(texts(), ElementsAre("one", threeParagraphs.first(122), "Attached: Text capture"));
    submit("two");
    EXPECT_EQ(panel().queuedTurns(), 0U);
}

TEST_F(QueueTest, AnAnalysisReplacesTheRunningTurn) {
    submit("one");
    panel().typeHighlightAndAnalyze(" captured ");
    m_clock.settle();
    EXPECT_THAT(texts(), ElementsAre("one", "Attached: Text capture", "Working..."));
    EXPECT_TRUE(m_transport.at(0).isAbandoned());
    EXPECT_EQ(m_transport.at(1).path(), "/ai/analyze");
    EXPECT_EQ(m_transport.at(1).json()["text"], "captured");
    EXPECT_EQ(m_transport.at(1).json()["screenDataUrl"], "");
    EXPECT_EQ(m_transport.at(1).json()["stream"], true);
    reply(m_transport.at(1), "Analysed.");
    EXPECT_EQ(last().text, "Analysed.");
}

TEST_F(QueueTest, ATurnEndingAfterItsSuccessorBeganOnlyTakesTheHandle) {
    submit("one");
    panel().typeHighlightAndAnalyze("captured");
    m_clock.settle();
    EXPECT_TRUE(panel().isPanelTurnInFlight()) << "the placeholder still tells of the turn";
    {
        // Without the placeholder nothing does, though the request runs on.
        const VorqMessage placeholder = last();
        panel().messages().removeIf([](const VorqMessage& message) { return message.isWorking; });
        EXPECT_FALSE(panel().isPanelTurnInFlight());
        EXPECT_FALSE(m_transport.at(1).isAbandoned());
        panel().messages().append(placeholder);
    }
    submit("two");
    EXPECT_EQ(m_transport.count(), 2u);
    EXPECT_EQ(panel().queuedTurns(), 1u);
    reply(m_transport.at(1), threeParagraphs);
    advance(1s);
    EXPECT_EQ(m_transport.count(), 3u) << "the queue goes on when the analysis is typed";
}

TEST_F(QueueTest, APromptQueuedBehindAnAnalysisWaitsForItsTyping) {
    panel().typeHighlightAndAnalyze("captured");
    m_clock.settle();
    submit("one");
    reply(m_transport.at(0), threeParagraphs);
    advance(459ms);
    EXPECT_EQ(m_transport.count(), 1u);
    advance(1ms);
    EXPECT_EQ(m_transport.count(), 2u);
}

TEST_F(QueueTest, APromptQueuedBehindAnInstantAnalysisIsSentToo) {
    panel().typeHighlightAndAnalyze("captured");
    m_clock.settle();
    submit("one");
    reply(m_transport.at(0), "Short.");
    EXPECT_EQ(m_transport.count(), 2u);
}

TEST_F(QueueTest, APromptQueuedBehindAnAnalysisThatFailsIsSentToo) {
    panel().typeHighlightAndAnalyze("captured");
    m_clock.settle();
    submit("one");
    m_transport.at(0).fail("refused");
    m_clock.settle();
    EXPECT_EQ(m_transport.count(), 2u);
}

TEST_F(QueueTest, StopAlsoEndsATurnThatHasLostItsHandle) {
    submit("one");
    panel().typeHighlightAndAnalyze("captured");
    m_clock.settle();
    m_transport.at(1).begin();
    sendText(m_transport.at(1), threeParagraphs);
    panel().stopPanelResponse();
    m_clock.settle();
    EXPECT_TRUE(m_transport.at(1).isAbandoned());
    const QString shown = last().text;
    sendText(m_transport.at(1), threeParagraphs + "\n\nmore\n\nand more");
    EXPECT_EQ(last().text, shown);
    EXPECT_FALSE(last().isTyping);
}

TEST_F(QueueTest, AnotherPromptRightAfterAStopCanBeStoppedToo) {
    submit("one");
    panel().stopPanelResponse();
    submit("two");
    panel().stopPanelResponse();
    m_clock.settle();
    EXPECT_TRUE(m_transport.at(1).isAbandoned());
    EXPECT_THAT(texts(), ElementsAre("one", "two"));
}

TEST_F(QueueTest, StopAndClearDuringAnAnalysisLeaveNoReply) {
    panel().typeHighlightAndAnalyze("captured");
    m_clock.settle();
    panel().stopPanelResponse();
    m_clock.settle();
    EXPECT_THAT(texts(), ElementsAre("Attached: Text capture"));
    panel().typeHighlightAndAnalyze("captured");
    m_clock.settle();
    panel().clearPanelChat();
    advance(5s);
    EXPECT_THAT(texts(), ElementsAre(greeting));
}

} // namespace
} // namespace vorq
