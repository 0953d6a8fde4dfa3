// How texts enter the conversation, in virtual time.

#include "doubles/panel/ConversationFixture.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::SizeIs;

const QString helloLine = u"Hello 👋, Vorq here…"_s;

class TypewriterTest : public ConversationFixture {
  protected:
    [[nodiscard]] ReplyTypewriter& typewriter() { return panel().typewriter(); }

    void type(const QString& text, AssistantReveal reveal = AssistantReveal::Blocks) {
        typewriter().startTypingAssistantMessage(text, std::nullopt, std::nullopt, 160ms, reveal);
        m_clock.settle();
    }
};

TEST_F(TypewriterTest, TheGreetingIsTypedInAboutHalfASecond) {
    panel().ensurePanelGreeting();
    EXPECT_THAT(texts(), ElementsAre(""));
    EXPECT_TRUE(last().isTyping);
    advance(160ms);
    EXPECT_EQ(last().text, "");
    advance(33ms);
    EXPECT_EQ(last().text, "H");
    advance(132ms);
    EXPECT_EQ(last().text, "Hello ") << "it rests after a word";
    advance(33ms);
    EXPECT_EQ(last().text, "Hello ");
    advance(33ms);
    EXPECT_EQ(last().text, u"Hello 👋, "_s);
    advance(231ms);
    EXPECT_TRUE(last().isTyping);
    advance(33ms);
    EXPECT_EQ(last().text, helloLine);
    EXPECT_FALSE(last().isTyping);
    EXPECT_EQ(m_clock.pendingTimers(), 0u);
}

TEST_F(TypewriterTest, AReplyWithoutAnyBlockWaitsForNothing) {
    const QString fences = u"```\n```\n"_s.repeated(20) + "```\n```";
    submit("one");
    reply(exchange(), fences);
    EXPECT_EQ(last().text, fences);
    EXPECT_FALSE(panel().isPanelResponding());
}

TEST_F(TypewriterTest, AGreetingIsNeverATurnHoweverFarItIsTyped) {
    panel().ensurePanelGreeting();
    while (last().isTyping) {
        EXPECT_FALSE(panel().isPanelTurnInFlight()) << qPrintable(last().text);
        EXPECT_TRUE(panel().isPanelGreetingOnly());
        advance(10ms);
    }
    EXPECT_TRUE(panel().isPanelGreetingOnly());
}

TEST_F(TypewriterTest, AConversationThatHoldsAnythingIsNotGreeted) {
    panel().messages().append(VorqMessage::placeholder());
    panel().ensurePanelGreeting();
    EXPECT_THAT(messages(), SizeIs(1));
    EXPECT_FALSE(panel().isPanelGreetingOnly());
}

TEST_F(TypewriterTest, LocalAnswersAppearAsNewMessages) {
    type("Saved to History.");
    EXPECT_THAT(texts(), ElementsAre("Saved to History."));
    EXPECT_EQ(last().role, MessageRole::Assistant);
    EXPECT_FALSE(last().isTyping);
}

TEST_F(TypewriterTest, LongerAnswersWaitForTheirPause) {
    type(threeParagraphs);
    advance(159ms);
    EXPECT_EQ(last().text, "");
    advance(1ms);
    EXPECT_EQ(last().text, QString(60, u'a'));
}

TEST_F(TypewriterTest, AnEmptyTextEndsAsAnEmptyMessage) {
    type(" \n");
    EXPECT_THAT(texts(), ElementsAre(""));
    EXPECT_FALSE(last().isTyping);
    EXPECT_EQ(last().typingFullText, std::nullopt);
}

TEST_F(TypewriterTest, AnEmptyTextClearsAPlaceholder) {
    const VorqMessage placeholder = VorqMessage::placeholder();
    panel().messages().append(placeholder);
    typewriter().startTypingAssistantMessage("", std::nullopt, placeholder.id, 220ms,
                                             AssistantReveal::Blocks);
    EXPECT_THAT(texts(), ElementsAre(""));
    EXPECT_FALSE(last().isWorking);
    EXPECT_FALSE(last().isTyping);
}

TEST_F(TypewriterTest, ANewRevealCompletesTheOneBefore) {
    type(threeParagraphs);
    advance(160ms);
    type("Short.");
    EXPECT_THAT(texts(), ElementsAre(threeParagraphs, "Short."));
    advance(1s);
    EXPECT_THAT(texts(), ElementsAre(threeParagraphs, "Short."));
}

TEST_F(TypewriterTest, AnUnknownTargetBecomesANewMessage) {
    typewriter().startTypingAssistantMessage("Short.", std::nullopt, QUuid::createUuid(), 40ms,
                                             AssistantReveal::Blocks);
    EXPECT_THAT(texts(), ElementsAre("Short."));
}

TEST_F(TypewriterTest, ATextAppliedTwiceChangesNothingTheSecondTime) {
    type("Short.");
    int changes = 0;
    QObject::connect(&panel().messages(), &MessageList::changed, [&changes] { ++changes; });
    typewriter().applyTypingText("Short.", last().id, false);
    typewriter().applyTypingText("Other.", QUuid::createUuid(), false);
    EXPECT_EQ(changes, 0);
}

TEST_F(TypewriterTest, FinishingOneRoleLeavesTheOther) {
    VorqMessage user;
    user.isTyping = true;
    user.text = "us";
    user.typingFullText = " user text ";
    panel().messages().append(user);
    VorqMessage assistant;
    assistant.role = MessageRole::Assistant;
    assistant.isTyping = true;
    assistant.text = "as";
    panel().messages().append(assistant);
    typewriter().finishTypingFlags(MessageRole::User);
    EXPECT_THAT(texts(), ElementsAre("user text", "as"));
    EXPECT_TRUE(messages()[1].isTyping);
    typewriter().finishTypingFlags(std::nullopt);
    EXPECT_THAT(texts(), ElementsAre("user text", "as"));
    EXPECT_FALSE(messages()[1].isTyping);
}

TEST_F(TypewriterTest, OnlyOneRowChangesWhileAReplyGrows) {
    submit("one");
    exchange().begin();
    std::vector<std::pair<int, QList<int>>> changes;
    QObject::connect(
        &panel().messages(), &MessageList::dataChanged,
        [&changes](const QModelIndex& first, const QModelIndex& last, const QList<int>& roles) {
            EXPECT_EQ(first.row(), last.row());
            changes.emplace_back(first.row(), roles);
        });
    sendText(exchange(), "A first paragraph.\n\nA second one.");
    sendText(exchange(), "A first paragraph.\n\nA second one.\n\nThird");
    ASSERT_THAT(changes, SizeIs(2));
    EXPECT_EQ(changes[1], std::pair(1, QList<int>{MessageList::TextRole}));
}

} // namespace
} // namespace vorq
