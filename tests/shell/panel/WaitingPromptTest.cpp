#include "shell/panel/WaitingPrompt.h"

#include "doubles/panel/ClipsFixture.h"

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WaitingPromptTest : public ClipsFixture {
  protected:
    // A prompt that waits for its clip.
    void sendEarly() {
        model().setPrompt("Why?");
        choose({"a.txt"});
        send();
    }
    [[nodiscard]] bool isWaiting() { return model().waiting()->isWaiting(); }
};

TEST_F(WaitingPromptTest, APromptGoesOutWithAllItsClipsOnceTheyAreLoaded) {
    QSignalSpy announced(&model(), &PanelViewModel::announced);
    sendEarly();
    choose({"b.txt"});
    EXPECT_TRUE(isWaiting());
    EXPECT_EQ(model().prompt(), "Why?");
    EXPECT_EQ(announced[1][0], "Goes out once all is attached.");
    finish(1);
    EXPECT_THAT(said(), IsEmpty());
    finish(0);
    EXPECT_THAT(said(), ElementsAre("Why?\n\n📎 a.txt, b.txt"));
    EXPECT_FALSE(isWaiting());
    EXPECT_EQ(model().prompt(), "");
    EXPECT_EQ(clips().count(), 0);
}

TEST_F(WaitingPromptTest, AnExcerptGoesAloneWithoutWaitingAndTheRestStaysAttached) {
    choose({"a.txt", "b.txt"});
    finish(0);
    model().addDeepenSelection("silt settles");
    send();
    EXPECT_THAT(said(), ElementsAre("deepen — \"silt settles\""));
    EXPECT_FALSE(isWaiting());
    EXPECT_THAT(shown(), ElementsAre("a.txt", "b.txt…"));
    EXPECT_EQ(model().notice(), "What is still attached goes with the next prompt.");
    finish(1);
    model().setPrompt("Why?");
    EXPECT_EQ(model().notice(), "");
    send();
    EXPECT_EQ(said().back(), "Why?\n\n📎 a.txt, b.txt");
    EXPECT_EQ(clips().count(), 0);
}

TEST_F(WaitingPromptTest, OfTwoPicturesTheFirstGoesAndTheSecondStaysAttached) {
    m_reader.answer = [](const QString& path) {
        PromptAttachment picture;
        picture.fileName = path.section(u'/', -1);
        picture.imageDataURL = "data:image/jpeg;base64," + picture.fileName;
        return picture;
    };
    choose({"a.png", "b.png"});
    model().setPrompt("Why?");
    send();
    EXPECT_THAT(said(), ElementsAre("Why?\n\n📎 a.png"));
    EXPECT_THAT(shown(), ElementsAre("b.png"));
    EXPECT_EQ(model().notice(), "What is still attached goes with the next prompt.");
    send();
    EXPECT_EQ(said().back(), "Attached: b.png");
    EXPECT_EQ(clips().count(), 0);
    EXPECT_EQ(model().notice(), "");
}

TEST_F(WaitingPromptTest, EnterAgainChangesNothing) {
    sendEarly();
    send();
    finish(0);
    EXPECT_THAT(said(), ElementsAre("Why?\n\n📎 a.txt"));
}

TEST_F(WaitingPromptTest, WithAClipThatFailsItIsADraftAgain) {
    sendEarly();
    fail(0, "it is locked");
    EXPECT_FALSE(isWaiting());
    EXPECT_THAT(said(), IsEmpty());
    EXPECT_EQ(model().prompt(), "Why?");
    EXPECT_THAT(shown(), ElementsAre("a.txt!"));
    EXPECT_TRUE(model().notice().startsWith("Not sent:"));
    send();
    EXPECT_THAT(said(), IsEmpty()) << "it does not go out without what was attached";
    remove(0);
    EXPECT_EQ(model().notice(), "");
    send();
    EXPECT_THAT(said(), ElementsAre("Why?"));
}

TEST_F(WaitingPromptTest, TakenBackItStaysADraft) {
    sendEarly();
    model().waiting()->cancel();
    finish(0);
    EXPECT_THAT(said(), IsEmpty());
    EXPECT_EQ(model().prompt(), "Why?");
    EXPECT_THAT(shown(), ElementsAre("a.txt"));
    send();
    EXPECT_THAT(said(), ElementsAre("Why?\n\n📎 a.txt"));
}

TEST_F(WaitingPromptTest, EscapeTakesItBackBeforeItClosesThePanel) {
    sendEarly();
    EXPECT_TRUE(model().closeInnermost());
    EXPECT_FALSE(isWaiting());
    EXPECT_FALSE(model().closeInnermost());
}

TEST_F(WaitingPromptTest, WhoeverWritesOnIsNotInterrupted) {
    sendEarly();
    model().setPrompt("Why? And");
    finish(0);
    EXPECT_THAT(said(), IsEmpty());
    EXPECT_EQ(model().prompt(), "Why? And");
}

TEST_F(WaitingPromptTest, WithoutTheSlowClipItGoesOut) {
    sendEarly();
    remove(0);
    EXPECT_THAT(said(), ElementsAre("Why?"));
}

TEST_F(WaitingPromptTest, WithNothingLeftOfItItIsForgotten) {
    choose({"a.txt"});
    send();
    EXPECT_TRUE(isWaiting());
    remove(0);
    EXPECT_FALSE(isWaiting());
    EXPECT_THAT(said(), IsEmpty());
}

TEST_F(WaitingPromptTest, SignedOutMeanwhileNothingIsLost) {
    sendEarly();
    state().account().signOut();
    finish(0);
    EXPECT_THAT(said(), IsEmpty());
    EXPECT_EQ(model().prompt(), "Why?");
    EXPECT_THAT(shown(), ElementsAre("a.txt"));
}

TEST_F(WaitingPromptTest, ItDoesNotBeginANewChat) {
    sendEarly();
    panel().clearPanelChat();
    finish(0);
    EXPECT_THAT(said(), IsEmpty());
    EXPECT_EQ(model().prompt(), "Why?");
}

TEST_F(WaitingPromptTest, AFailedClipAloneCannotBeSent) {
    choose({"a.txt"});
    EXPECT_TRUE(model().canSend());
    QSignalSpy told(&model(), &PanelViewModel::canSendChanged);
    fail(0, "it is locked");
    EXPECT_FALSE(model().canSend());
    EXPECT_GE(told.count(), 1);
}

} // namespace
} // namespace vorq
