#include "panel/PanelRequests.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using testing::SizeIs;

PromptAttachment attachment(const QString& name, std::optional<QString> text = {},
                            bool isDeepenSelection = false) {
    PromptAttachment made;
    made.fileName = name;
    made.textContent = std::move(text);
    made.isDeepenSelection = isDeepenSelection;
    return made;
}

VorqMessage said(MessageRole role, const QString& text) {
    VorqMessage message;
    message.role = role;
    message.text = text;
    return message;
}

TEST(SubmitBubble, IsNothingForBlanksAlone) {
    EXPECT_EQ(submitBubble(u" \n\t", {}), std::nullopt);
}

TEST(SubmitBubble, NamesTheAttachmentsUnderThePrompt) {
    EXPECT_EQ(submitBubble(u" why? ", {attachment("a.pdf"), attachment("b.txt")}),
              u"why?\n\n📎 a.pdf, b.txt"_s);
    EXPECT_EQ(submitBubble(u"", {attachment("a.pdf")}), "Attached: a.pdf");
}

TEST(DeepenBubble, NeedsTwoCharacters) {
    EXPECT_EQ(deepenBubble(u" x \n", u"why?"), std::nullopt);
    EXPECT_EQ(deepenBubble(u"👩‍👩‍👧", u""), std::nullopt);
    EXPECT_EQ(deepenBubble(u"xx", u""), u"deepen — \"xx\""_s);
}

TEST(DeepenBubble, CutsALongExcerptButNotOneAtTheLimit) {
    EXPECT_EQ(deepenBubble(QString(120, u'x'), u""), u"deepen — \""_s + QString(120, u'x') + u'"');
    EXPECT_EQ(deepenBubble(QString(200, u'x'), u""),
              u"deepen — \""_s + QString(117, u'x') + u"…\""_s);
}

TEST(DeepenBubble, ShowsThePromptIfThereIsOne) {
    EXPECT_EQ(deepenBubble(u"excerpt", u" why? "), "why?");
}

TEST(RecentMessages, KeepsTheLastThatAreNoPlaceholders) {
    std::vector<VorqMessage> messages;
    for (int i = 0; i < 14; ++i)
        messages.push_back(
            said(i % 2 == 0 ? MessageRole::User : MessageRole::Assistant, QString::number(i)));
    messages.push_back(VorqMessage::placeholder());
    const auto recent = recentMessages(messages, 10);
    ASSERT_THAT(recent, SizeIs(10));
    EXPECT_EQ(recent.front(), (RecentMessage{"user", "4"}));
    EXPECT_EQ(recent.back(), (RecentMessage{"assistant", "13"}));
}

TEST(PanelPromptRequest, SendsThePromptAsItStands) {
    PanelPromptContext context;
    context.prompt = "why?";
    const PanelRequest request = panelPromptRequest(context);
    EXPECT_EQ(request.body.prompt, "why?");
    EXPECT_TRUE(request.body.stream);
    EXPECT_FALSE(request.body.skipUserPreferences);
    EXPECT_FALSE(request.body.forceLearn);
    EXPECT_FALSE(request.isStudyTurn);
    EXPECT_EQ(request.body.timeout(), std::chrono::seconds(60));
}

TEST(PanelPromptRequest, DropsRepeatedAndEmptyContexts) {
    PanelPromptContext context;
    context.prompt = "why?";
    context.isStudyingNote = true;
    context.studySource = "same";
    context.highlightedText = " same\n";
    context.attachments = {attachment("a.txt", "more")};
    EXPECT_EQ(panelPromptRequest(context).body.selectedText,
              "same\n\n--- Attached file: a.txt ---\nmore");
}

TEST(PanelPromptRequest, ADeepenedSelectionAloneIsNoDeepResearch) {
    PanelPromptContext context;
    context.attachments = {attachment("x.pdf", "text", true)};
    EXPECT_FALSE(panelPromptRequest(context).body.deepResearch);
    EXPECT_EQ(panelPromptRequest(context).body.prompt,
              "Please review the attached materials as study context and help me understand them.");
}

TEST(PanelPromptRequest, AnAttachedNoteIsDeepResearchWithTheLongerTimeout) {
    PanelPromptContext context;
    context.prompt = "why?";
    context.attachments = {attachment("Notes", " ")};
    context.attachments.front().noteID = QUuid::createUuid();
    const PanelRequest request = panelPromptRequest(context);
    EXPECT_TRUE(request.body.deepResearch);
    EXPECT_TRUE(request.isStudyTurn);
    EXPECT_EQ(request.body.timeout(), std::chrono::seconds(90));
    EXPECT_TRUE(request.body.prompt.endsWith("\nStudent request: why?"));
}

TEST(PanelPromptRequest, ADocumentByNameIsDeepResearchAndAPictureIsNot) {
    PanelPromptContext context;
    context.attachments = {attachment("b.PNG")};
    EXPECT_FALSE(panelPromptRequest(context).body.deepResearch);
    context.attachments = {attachment("d.Key")};
    EXPECT_TRUE(panelPromptRequest(context).body.deepResearch);
    EXPECT_TRUE(
        panelPromptRequest(context).body.prompt.startsWith("Deep research this attached study"));
}

TEST(PanelPromptRequest, SaysThatANoteIsStudied) {
    PanelPromptContext context;
    context.prompt = "why?";
    context.isStudyingNote = true;
    const PanelRequest request = panelPromptRequest(context);
    EXPECT_EQ(request.body.prompt,
              "The student is studying a saved note. Use the note / attachments as context.\n"
              "Student request: why?");
    EXPECT_TRUE(request.isStudyTurn);
}

TEST(PanelPromptRequest, SendsTheFirstImageOnly) {
    PanelPromptContext context;
    context.attachments = {attachment("a.txt"), attachment("b.png"), attachment("c.png")};
    context.attachments[1].imageDataURL = "data:b";
    context.attachments[2].imageDataURL = "data:c";
    EXPECT_EQ(panelPromptRequest(context).body.screenDataUrl, "data:b");
}

TEST(PanelDeepenRequest, SendsTheExcerptAndEightMessages) {
    const std::vector<VorqMessage> messages(12, said(MessageRole::User, "x"));
    const PanelRequest request = panelDeepenRequest("excerpt", "", messages);
    EXPECT_EQ(request.body.selectedText, "excerpt");
    EXPECT_THAT(request.body.recentMessages, SizeIs(8));
    EXPECT_TRUE(request.body.prompt.startsWith(
        u"Go deeper on this excerpt from your previous reply — explain"_s));
    EXPECT_FALSE(request.body.prompt.contains("Also address"));
    EXPECT_FALSE(request.isStudyTurn);
}

TEST(PanelDeepenRequest, AddsTheRequestOfTheUser) {
    const PanelRequest request = panelDeepenRequest("excerpt", "in French", {});
    EXPECT_TRUE(request.body.prompt.contains(
        "next. Also address this request: in French\nStructure the reply"));
}

} // namespace
} // namespace vorq
