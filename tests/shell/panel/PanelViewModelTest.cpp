#include "shell/panel/PanelViewModel.h"
#include "doubles/capture/ScriptedAttachmentReader.h"
#include "doubles/panel/ConversationFixture.h"
#include "shell/notices/Advice.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

class PanelViewModelTest : public ConversationFixture {
  protected:
    PanelViewModel& model() {
        if (!m_model) m_model = std::make_unique<PanelViewModel>(state(), m_clock, m_reader);
        return *m_model;
    }
    ~PanelViewModelTest() override { m_model.reset(); }

    void signOut() { state().account().signOut(); }

    static PromptAttachment deepenClip(const QString& text) {
        PromptAttachment clip;
        clip.isDeepenSelection = true;
        clip.textContent = text;
        return clip;
    }

    ScriptedAttachmentReader m_reader;
    std::unique_ptr<PanelViewModel> m_model;
};

TEST_F(PanelViewModelTest, APromptOrAnAttachmentCanBeSent) {
    EXPECT_FALSE(model().canSend());
    model().setPrompt(" \n ");
    EXPECT_FALSE(model().canSend());
    model().setPrompt("a");
    EXPECT_TRUE(model().canSend());
    model().setPrompt("");
    model().attachments().append(PromptAttachment{});
    EXPECT_TRUE(model().canSend());
}

TEST_F(PanelViewModelTest, SendingClearsTheDraft) {
    QSignalSpy sent(&model(), &PanelViewModel::composerSent);
    model().setPrompt("Hello there");
    model().attachments().append(PromptAttachment{});
    model().tray()->setShown(true);
    model().send();
    m_clock.settle();
    EXPECT_EQ(sent.count(), 1);
    EXPECT_EQ(model().prompt(), "");
    EXPECT_EQ(model().attachments().count(), 0);
    EXPECT_FALSE(model().tray()->isShown());
    EXPECT_TRUE(messages().front().text.startsWith("Hello there"));
    EXPECT_TRUE(model().isResponding());
}

TEST_F(PanelViewModelTest, ADraftOutlivesTheProgramUntilItIsSent) {
    const QString key = "vorq.panel.draft";
    model().setPrompt("Hel");
    advance(400ms);
    model().setPrompt("Hello there");
    advance(499ms);
    EXPECT_FALSE(m_defaults.contains(key)) << "it waits for a pause";
    advance(1ms);
    EXPECT_EQ(m_defaults.string(key), "Hello there");
    m_model.reset();
    EXPECT_EQ(model().prompt(), "Hello there");
    EXPECT_TRUE(model().canSend());
    model().send();
    EXPECT_FALSE(m_defaults.contains(key));
    const int writes = m_defaults.writes();
    advance(1s);
    m_model.reset();
    EXPECT_EQ(model().prompt(), "");
    EXPECT_EQ(m_defaults.writes(), writes);
}

TEST_F(PanelViewModelTest, ADraftIsKeptWhileTheUserTypesOnAndOn) {
    const int writes = m_defaults.writes();
    for (int step = 0; step < 50; ++step) {
        model().setPrompt(model().prompt() + "a");
        advance(101ms);
    }
    EXPECT_EQ(m_defaults.string("vorq.panel.draft").value_or("").size(), 50);
    EXPECT_EQ(m_defaults.writes(), writes + 1);
}

TEST_F(PanelViewModelTest, ADraftThatCannotBeSentIsKept) {
    signOut();
    model().setPrompt("Hello");
    model().send();
    advance(1s);
    EXPECT_EQ(m_defaults.string("vorq.panel.draft"), "Hello");
}

TEST_F(PanelViewModelTest, AClearedDraftIsForgotten) {
    model().setPrompt("Hello");
    advance(1s);
    model().setPrompt("");
    advance(1s);
    EXPECT_FALSE(m_defaults.contains("vorq.panel.draft"));
}

TEST_F(PanelViewModelTest, WithNothingToSendNothingHappens) {
    QSignalSpy sent(&model(), &PanelViewModel::composerSent);
    model().send();
    EXPECT_EQ(sent.count(), 0);
    EXPECT_THAT(messages(), testing::IsEmpty());
}

TEST_F(PanelViewModelTest, SignedOutThePromptBouncesAndStays) {
    signOut();
    QSignalSpy wanted(&model(), &PanelViewModel::attentionWanted);
    model().setPrompt("Hello");
    model().attachments().append(PromptAttachment{});
    model().send();
    m_clock.settle();
    EXPECT_TRUE(model().promptBounce());
    ASSERT_EQ(wanted.count(), 1);
    EXPECT_EQ(wanted[0][0].toBool(), false);
    EXPECT_EQ(model().prompt(), "Hello");
    EXPECT_EQ(model().attachments().count(), 1);
    EXPECT_THAT(messages(), testing::IsEmpty());
    advance(219ms);
    EXPECT_TRUE(model().promptBounce());
    advance(1ms);
    EXPECT_FALSE(model().promptBounce());
}

TEST_F(PanelViewModelTest, AViewModelThatGoesWhileBouncingLeavesNothingBehind) {
    signOut();
    model().setPrompt("Hello");
    model().send();
    m_clock.settle();
    m_model.reset();
    advance(1s);
}

TEST_F(PanelViewModelTest, ADeepenClipStartsADeepenTurn) {
    model().attachments().append(deepenClip("an excerpt"));
    model().setPrompt("");
    model().send();
    m_clock.settle();
    EXPECT_EQ(messages().front().text, "deepen — \"an excerpt\"");
}

TEST_F(PanelViewModelTest, ADeepenTurnCarriesThePrompt) {
    model().attachments().append(deepenClip("an excerpt"));
    model().setPrompt("Why?");
    model().send();
    m_clock.settle();
    EXPECT_EQ(messages().front().text, "Why?");
    EXPECT_TRUE(exchange().request().body->contains("an excerpt"));
}

TEST_F(PanelViewModelTest, AnExcerptOfOneCharacterIsNoDeepenTurn) {
    model().attachments().append(deepenClip(" a "));
    model().setPrompt("Why?");
    model().send();
    m_clock.settle();
    EXPECT_EQ(messages().front().text, "Why?\n\n📎 deepen");
}

TEST_F(PanelViewModelTest, ThePillPutsOneClipAmongTheAttachments) {
    QSignalSpy focus(&model(), &PanelViewModel::focusPromptWanted);
    model().addDeepenSelection("first");
    model().addDeepenSelection("second");
    ASSERT_EQ(model().attachments().count(), 1);
    EXPECT_EQ(model().attachments().attachments()[0].textContent, "second");
    EXPECT_EQ(focus.count(), 2);
}

TEST_F(PanelViewModelTest, WhileAReplyRunsADraftQueues) {
    model().setPrompt("one");
    model().send();
    m_clock.settle();
    model().setPrompt("two");
    model().send();
    m_clock.settle();
    EXPECT_EQ(panel().queuedTurns(), 1U);
    model().setPrompt("three");
    model().stopPanelResponse();
    m_clock.settle();
    EXPECT_FALSE(model().isResponding());
    EXPECT_EQ(model().prompt(), "three");
}

TEST_F(PanelViewModelTest, WhatBecomesOfAPromptIsAnnounced) {
    QSignalSpy announced(&model(), &PanelViewModel::announced);
    model().setPrompt("Hello there");
    model().send();
    m_clock.settle();
    ASSERT_EQ(announced.count(), 1);
    EXPECT_EQ(announced[0][0].toString(), "Working...");
    VorqMessage reply = messages().back();
    reply.isWorking = false;
    reply.isTyping = true;
    reply.text = "**Leaves**";
    state().panel().messages().update(reply);
    m_clock.settle();
    EXPECT_EQ(announced.count(), 1) << "not what is growing";
    reply.isTyping = false;
    reply.text = "**Leaves**\n\nThey are *green*.";
    state().panel().messages().update(reply);
    m_clock.settle();
    ASSERT_EQ(announced.count(), 2);
    EXPECT_EQ(announced[1][0].toString(), "Leaves\nThey are green.");
    reply.followUp = VorqFollowUp{"Why?", {"Because"}};
    state().panel().messages().update(reply);
    m_clock.settle();
    EXPECT_EQ(announced.count(), 2) << "each reply once";
}

TEST_F(PanelViewModelTest, AGreetingAndANoticeThatGoesAreNotAnnounced) {
    QSignalSpy announced(&model(), &PanelViewModel::announced);
    model().ensurePanelGreeting();
    m_clock.advance(5s);
    EXPECT_EQ(announced.count(), 0);
    signOut();
    model().setPrompt("a");
    model().send();
    ASSERT_EQ(announced.count(), 1);
    EXPECT_EQ(announced[0][0].toString(), model().notice());
    model().setPrompt("ab");
    EXPECT_EQ(announced.count(), 1);
}

TEST_F(PanelViewModelTest, TheLastPromptComesBackIntoAnEmptyDraft) {
    EXPECT_FALSE(model().recallLastPrompt());
    model().setPrompt(" one ");
    model().send();
    m_clock.settle();
    model().setPrompt("x");
    EXPECT_FALSE(model().recallLastPrompt());
    model().setPrompt("");
    EXPECT_TRUE(model().recallLastPrompt());
    EXPECT_EQ(model().prompt(), "one");
}

TEST_F(PanelViewModelTest, ALabelIsSentBesideTheDraft) {
    model().setPrompt("draft");
    model().submitLabel("Yes");
    m_clock.settle();
    EXPECT_EQ(messages().front().text, "Yes");
    EXPECT_EQ(model().prompt(), "draft");
}

TEST_F(PanelViewModelTest, ChoosingFilesClosesTheTray) {
    model().tray()->setShown(true);
    QSignalSpy focus(&model(), &PanelViewModel::focusPromptWanted);
    model().intake()->attachFiles({});
    EXPECT_FALSE(model().tray()->isShown());
    EXPECT_EQ(focus.count(), 1);
}

TEST_F(PanelViewModelTest, ThePlaceholderTellsOfTheStudy) {
    EXPECT_EQ(model().promptPlaceholder(), "Ask Vorq for help…");
    state().study().setActiveNote(QUuid::createUuid(), "body");
    EXPECT_EQ(model().promptPlaceholder(), "Ask about this note…");
    EXPECT_EQ(model().attachments().count(), 1);
}

TEST_F(PanelViewModelTest, WhatIsNoFileIsANotice) {
    model().intake()->attachFiles({QUrl("https://example.org/a.png")});
    EXPECT_EQ(model().notice(), "https://example.org/a.png: only files can be attached.");
    EXPECT_EQ(model().attachments().count(), 0);
    model().setPrompt("typing on");
    EXPECT_EQ(model().notice(), "");
}

TEST_F(PanelViewModelTest, SaysHowToSignInUntilSomebodyDoes) {
    state().account().markSessionExpired();
    model().setPrompt("a question");
    model().send();
    EXPECT_EQ(model().notice(), signInAdvice());
    Session session;
    session.signedIn = true;
    session.token = "new";
    state().account().applySession(session);
    EXPECT_EQ(model().notice(), "");
}

} // namespace
} // namespace vorq
