// One turn of the panel, in virtual time.

#include "doubles/panel/ConversationFixture.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::SizeIs;

using TurnTest = ConversationFixture;

TEST_F(TurnTest, GoesFromWorkingToDoneAtTheExactMilliseconds) {
    submit("Explain");
    EXPECT_THAT(texts(), ElementsAre("Explain", "Working..."));
    EXPECT_EQ(status(), VorqWorkStatus::Working);
    EXPECT_TRUE(panel().isPanelResponding());

    advance(649ms);
    EXPECT_EQ(status(), VorqWorkStatus::Working);
    advance(1ms);
    EXPECT_EQ(status(), VorqWorkStatus::Analyzing);
    EXPECT_EQ(panel().workStatus().label(), "Analyzing...");

    const QString first(60, u'a'), second(60, u'b');
    exchange().begin();
    sendText(exchange(), first);
    EXPECT_EQ(last().text, first);
    EXPECT_TRUE(last().isTyping);
    EXPECT_FALSE(last().isWorking);
    EXPECT_EQ(status(), VorqWorkStatus::Working);

    sendText(exchange(), first + "\n\n" + second);
    EXPECT_EQ(last().text, first) << "the last block may still grow";

    sendDone(exchange(), threeParagraphs);
    EXPECT_EQ(last().text, first) << "the rest waits for the pause";
    EXPECT_EQ(last().typingFullText, threeParagraphs);
    EXPECT_TRUE(panel().isPanelResponding());

    advance(39ms);
    EXPECT_EQ(last().text, first);
    advance(1ms);
    EXPECT_EQ(last().text, first + "\n\n" + second);
    advance(119ms);
    EXPECT_EQ(last().text, first + "\n\n" + second);
    EXPECT_TRUE(last().isTyping);
    advance(1ms);
    EXPECT_EQ(last().text, threeParagraphs);
    EXPECT_FALSE(last().isTyping);
    EXPECT_EQ(last().typingFullText, std::nullopt);
    EXPECT_FALSE(panel().isPanelResponding());
    EXPECT_EQ(last().followUp->question, "More?");
    EXPECT_EQ(m_clock.pendingTimers(), 0u);
}

TEST_F(TurnTest, WithoutStreamedTextThePlaceholderStandsThroughThePause) {
    submit("Explain");
    reply(exchange(), threeParagraphs);
    EXPECT_EQ(last().text, "Working...");
    EXPECT_TRUE(last().isWorking);
    EXPECT_EQ(status(), VorqWorkStatus::Finishing);
    advance(219ms);
    EXPECT_TRUE(last().isWorking);
    advance(1ms);
    EXPECT_EQ(last().text, QString(60, u'a'));
    EXPECT_TRUE(last().isTyping);
    EXPECT_EQ(status(), VorqWorkStatus::Working);
    advance(240ms);
    EXPECT_EQ(last().text, threeParagraphs);
    EXPECT_FALSE(last().isTyping);
}

TEST_F(TurnTest, AShortReplyOfOneBlockSkipsThePause) {
    submit("Explain");
    reply(exchange(), QString(140, u'x'));
    EXPECT_EQ(last().text, QString(140, u'x'));
    EXPECT_FALSE(last().isTyping);
    EXPECT_FALSE(panel().isPanelResponding());
    EXPECT_EQ(status(), VorqWorkStatus::Working);
}

TEST_F(TurnTest, ALongerReplyOfOneBlockIsOneStepAfterThePause) {
    submit("Explain");
    reply(exchange(), QString(141, u'x'));
    EXPECT_EQ(last().text, "Working...");
    advance(220ms);
    EXPECT_EQ(last().text, QString(141, u'x'));
    EXPECT_FALSE(last().isTyping);
}

TEST_F(TurnTest, AnEmptyReplySaysThatThereIsNothing) {
    submit("Explain");
    reply(exchange(), "");
    EXPECT_EQ(last().text, "Vorq had nothing to say.");
}

TEST_F(TurnTest, TheVisibleReplyNeverShrinks) {
    submit("Explain");
    exchange().begin();
    sendText(exchange(), "A first paragraph.\n\nA second one.\n\nThird");
    EXPECT_EQ(last().text, "A first paragraph.\n\nA second one.");
    sendText(exchange(), "A first paragraph.\n\nAnother");
    EXPECT_EQ(last().text, "A first paragraph.\n\nA second one.");
}

TEST_F(TurnTest, WhatWasShownAndIsNotInTheReplyIsReplacedAfterThePause) {
    submit("Explain");
    exchange().begin();
    sendText(exchange(), "A first paragraph.\n\nA second one.\n\nThird");
    const QString final = QString(150, u'z');
    sendDone(exchange(), final);
    EXPECT_EQ(last().text, "A first paragraph.\n\nA second one.");
    advance(40ms);
    EXPECT_EQ(last().text, final);
    EXPECT_FALSE(last().isTyping);
}

TEST_F(TurnTest, ShownBlocksThatAreAllOfTheReplyOnlyEnd) {
    submit("Explain");
    exchange().begin();
    sendText(exchange(), threeParagraphs + "\n\nx");
    EXPECT_EQ(last().text, threeParagraphs);
    sendDone(exchange(), threeParagraphs);
    EXPECT_TRUE(last().isTyping);
    advance(40ms);
    EXPECT_FALSE(last().isTyping);
    EXPECT_EQ(last().text, threeParagraphs);
}

TEST_F(TurnTest, SendsTheWholeRequest) {
    panel().setHighlightedText("The highlighted text.");
    submit(" Explain ");
    EXPECT_EQ(exchange().path(), "/ai/prompt");
    EXPECT_EQ(exchange().header("Authorization"), "Bearer token");
    const QVariantMap body = exchange().json();
    EXPECT_EQ(body["prompt"], "Explain");
    EXPECT_EQ(body["selectedText"], "The highlighted text.");
    EXPECT_EQ(body["stream"], true);
    EXPECT_EQ(body["deepResearch"], false);
    EXPECT_FALSE(body.contains("preferredModel"));
    const QVariantList recent = body["recentMessages"].toList();
    ASSERT_THAT(recent, SizeIs(1));
    EXPECT_EQ(recent[0].toMap()["content"], "Explain");
}

TEST_F(TurnTest, SendsTheChosenModelOrTheOneForNow) {
    state().model().selectPreferredAIModel("openai/o3-mini");
    submit("one");
    EXPECT_EQ(exchange().json()["preferredModel"], "openai/o3-mini");
    panel().stopPanelResponse();
    panel().setModelForNow("local/model");
    submit("two");
    EXPECT_EQ(exchange().json()["preferredModel"], "local/model");
}

TEST_F(TurnTest, ALaterChangeOfTheContextDoesNotTouchTheTurn) {
    panel().setHighlightedText("before");
    panel().submit("Explain");
    panel().setHighlightedText("after");
    m_clock.settle();
    EXPECT_EQ(exchange().json()["selectedText"], "before");
}

TEST_F(TurnTest, AFailureReadsAsAReply) {
    submit("Explain");
    exchange().fail("refused");
    m_clock.settle();
    EXPECT_EQ(last().text, "Could not reach Vorq at http://127.0.0.1:8787. Check your connection, "
                           "or set VORQ_API_BASE_URL. To start it here: vorq-gateway serve");
    EXPECT_EQ(last().role, MessageRole::Assistant);
    EXPECT_FALSE(last().isWorking);
    EXPECT_FALSE(panel().isPanelResponding());
}

TEST_F(TurnTest, AnErrorHalfWayReplacesThePartialReplyAtOnce) {
    submit("Explain");
    exchange().begin();
    sendText(exchange(), threeParagraphs);
    EXPECT_TRUE(last().isTyping);
    exchange().send("data: {\"error\":\" The model gave up. \"}\n\n");
    m_clock.settle();
    EXPECT_EQ(last().text, "The model gave up.");
    EXPECT_FALSE(last().isTyping);
    EXPECT_EQ(last().followUp, std::nullopt);
}

TEST_F(TurnTest, AStreamThatBreaksOffAfterTextIsTheReply) {
    submit("Explain");
    exchange().begin();
    sendText(exchange(), "Only this much came over.");
    exchange().end();
    m_clock.settle();
    EXPECT_EQ(last().text, "Only this much came over.");
    EXPECT_FALSE(last().isTyping);
}

TEST_F(TurnTest, AConnectionThatDropsShowsThePlatformsDescription) {
    submit("Explain");
    exchange().begin();
    sendText(exchange(), "Only this much came over.");
    exchange().fail("The connection was reset.");
    m_clock.settle();
    EXPECT_EQ(last().text, "The connection was reset.");
}

TEST_F(TurnTest, FollowUpsVanishWithTheNextPrompt) {
    submit("Explain");
    reply(exchange(), "Short.");
    ASSERT_TRUE(last().followUp);
    submit(" \n");
    EXPECT_TRUE(last().followUp) << "a blank prompt does nothing";
    EXPECT_THAT(messages(), SizeIs(2));
    submit("More");
    for (const VorqMessage& message : messages())
        EXPECT_FALSE(message.followUp);
}

TEST_F(TurnTest, AnAttachmentAloneIsNamedAndReviewed) {
    PromptAttachment picture;
    picture.fileName = "map.png";
    picture.imageDataURL = "data:image/png;base64,AAAA";
    panel().submit("", {picture});
    m_clock.settle();
    EXPECT_EQ(messages()[0].text, "Attached: map.png");
    EXPECT_EQ(exchange().json()["prompt"], "Please review the attached materials as study context "
                                           "and help me understand them.");
    EXPECT_EQ(exchange().json()["screenDataUrl"], "data:image/png;base64,AAAA");
}

TEST_F(TurnTest, AStudyTurnKeepsItsReply) {
    state().study().setNoteLookup([](const QUuid&) { return QString("the note"); });
    state().study().setActiveNote(QUuid::createUuid(), "the note");
    submit("Explain");
    EXPECT_EQ(exchange().json()["selectedText"], "the note");
    reply(exchange(), "Because.");
    EXPECT_EQ(state().study().lastStudyResearch(), "Because.");
    submit("Again");
    refuse(exchange(), 500);
    EXPECT_EQ(last().text, "Request failed with status 500.");
    EXPECT_EQ(state().study().lastStudyResearch(), "Because.") << "a failure is no research";
}

TEST_F(TurnTest, ATurnWithoutStudyLeavesTheResearchAlone) {
    submit("Explain");
    reply(exchange(), "Because.");
    EXPECT_EQ(state().study().lastStudyResearch(), "");
}

TEST_F(TurnTest, ADeepenedSelectionGoesOutWhole) {
    const QString excerpt(200, u'x');
    panel().deepenSelection(excerpt, " ");
    m_clock.settle();
    EXPECT_EQ(messages()[0].text, u"deepen — \""_s + QString(117, u'x') + u"…\""_s);
    EXPECT_EQ(exchange().json()["selectedText"], excerpt);
    panel().deepenSelection("x", "why?");
    EXPECT_THAT(messages(), SizeIs(2)) << "too short an excerpt does nothing";
}

TEST_F(TurnTest, TheStateGoneMidwayLeavesNothingBehind) {
    submit("Explain");
    exchange().begin();
    sendText(exchange(), threeParagraphs);
    m_tester.reset();
    m_state.reset();
    m_clock.settle();
    EXPECT_TRUE(exchange().isAbandoned());
    EXPECT_EQ(m_clock.pendingTimers(), 0u);
}

TEST_F(TurnTest, TheStateGoneDuringTheRevealLeavesNoTimer) {
    submit("Explain");
    reply(exchange(), threeParagraphs);
    advance(230ms);
    m_tester.reset();
    m_state.reset();
    m_clock.settle();
    EXPECT_EQ(m_clock.pendingTimers(), 0u);
}

} // namespace
} // namespace vorq
