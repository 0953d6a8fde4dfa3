#include "doubles/ui/TypedTurns.h"

#include <QAccessible>

#include <gmock/gmock.h>

namespace vorq {
namespace {

/// What the user does after a reply that failed.
class RetryTest : public TypedTurns {
  protected:
    void fail() {
        stage.transport.last().fail("Recv failure: Connection reset by peer");
        settle();
    }
    void succeed(const QString& text) {
        QByteArray event = R"(data: {"text":"%","done":true,"summary":"%"})"
                           "\n\n";
        stage.transport.last().respond(200, event.replace('%', text.toUtf8()));
        settle();
    }
    [[nodiscard]] QList<QQuickItem*> buttons() {
        QList<QQuickItem*> shown;
        for (QQuickItem* item : stage.findAll("TextButton"))
            if (item->isVisible() && item->property("text").toString() == "Try again")
                shown += item;
        return shown;
    }
    void retry() {
        click(buttons()[0]);
        settle();
    }
    [[nodiscard]] const std::vector<VorqMessage>& messages() {
        return stage.state->panel().messages().messages();
    }
};

TEST_F(RetryTest, APressRunsTheTurnAgainInItsPlace) {
    enter("Explain");
    EXPECT_TRUE(buttons().isEmpty());
    fail();
    ASSERT_EQ(buttons().size(), 1);
    retry();
    EXPECT_TRUE(buttons().isEmpty()) << "while it is under way";
    ASSERT_EQ(stage.transport.count(), 2U);
    EXPECT_EQ(stage.transport.at(0).json(), stage.transport.at(1).json());
    succeed("Leaves are green.");
    ASSERT_EQ(messages().size(), 2U) << "neither the question nor the failure stands twice";
    EXPECT_EQ(messages()[1].text, "Leaves are green.");
    EXPECT_TRUE(buttons().isEmpty());
}

TEST_F(RetryTest, KeysReachItAndTheDraftHasTheKeyboardAfterIt) {
    enter("Explain");
    fail();
    ASSERT_EQ(buttons().size(), 1);
    QQuickItem* button = buttons()[0];
    for (int press = 0; press < 10 && !button->hasActiveFocus(); ++press)
        QTest::keyClick(stage.window.get(), Qt::Key_Tab);
    ASSERT_TRUE(button->hasActiveFocus());
    QAccessibleInterface* element = QAccessible::queryAccessibleInterface(button);
    ASSERT_TRUE(element);
    EXPECT_EQ(element->role(), QAccessible::Button);
    EXPECT_EQ(element->text(QAccessible::Name), "Try again");
    QTest::keyClick(stage.window.get(), Qt::Key_Return);
    settle();
    EXPECT_EQ(stage.transport.count(), 2U);
    QTest::keyClick(stage.window.get(), Qt::Key_X);
    EXPECT_EQ(stage.panel->prompt(), "x");
}

TEST_F(RetryTest, CapturedTextAndAttachmentsGoAgain) {
    stage.state->panel().setHighlightedText("captured");
    PromptAttachment file;
    file.fileName = "a.txt";
    file.textContent = "of the file";
    stage.panel->attachments().append(file);
    enter("Explain");
    fail();
    stage.state->panel().setHighlightedText("captured later");
    ASSERT_EQ(buttons().size(), 1);
    retry();
    EXPECT_EQ(stage.transport.last().json().value("selectedText").toString(),
              "captured\n\n--- Attached file: a.txt ---\nof the file");
    fail();
    EXPECT_EQ(buttons().size(), 1) << "it may fail again";
}

TEST_F(RetryTest, ACaptureIsAnalysedAgain) {
    stage.state->panel().typeHighlightAndAnalyze("captured");
    settle();
    fail();
    ASSERT_EQ(buttons().size(), 1);
    retry();
    EXPECT_EQ(stage.transport.last().path(), "/ai/analyze");
    EXPECT_EQ(stage.transport.last().json().value("text").toString(), "captured");
}

TEST_F(RetryTest, FlashcardsAreAskedForAgain) {
    stage.state->library().createBlankNote("Leaves are green.", HubArea::Study);
    enter("flashcards");
    fail();
    ASSERT_EQ(buttons().size(), 1);
    retry();
    EXPECT_EQ(stage.transport.last().path(), "/ai/flashcards");
    EXPECT_EQ(stage.transport.count(), 2U);
}

TEST_F(RetryTest, BehindARunningTurnItWaits) {
    enter("one");
    fail();
    enter("two");
    ASSERT_EQ(buttons().size(), 1);
    retry();
    EXPECT_EQ(stage.transport.count(), 2U);
    succeed("of two");
    EXPECT_EQ(stage.transport.count(), 3U);
    succeed("of one");
    ASSERT_EQ(messages().size(), 4U);
    EXPECT_EQ(messages()[1].text, "of one");
    EXPECT_EQ(messages()[3].text, "of two");
}

TEST_F(RetryTest, AReplyAndAnAnswerOfTheProgramOfferNothing) {
    enter("Explain");
    succeed("Leaves.");
    enter("open library");
    EXPECT_TRUE(buttons().isEmpty());
}

TEST_F(RetryTest, AFailureIsNoReplyToSaveAndWhatComesInItsPlaceIs) {
    enter("Explain");
    fail();
    enter("save notes");
    EXPECT_EQ(messages().back().text, "Nothing to save yet — ask me something first.");
    ASSERT_EQ(buttons().size(), 1);
    retry();
    succeed("Leaves are green.");
    enter("save notes");
    EXPECT_EQ(stage.state->panel().latestPanelAssistantText(), "Leaves are green.");
    EXPECT_TRUE(QTest::qWaitFor([this] { return messages().size() > 5; }))
        << "the notes have answered, whatever they say";
    EXPECT_FALSE(messages().back().text.startsWith("Nothing to save"));
}

TEST_F(RetryTest, ASavedChatHoldsNothingOfIt) {
    enter("Explain");
    fail();
    enter("save chat");
    const SavedChat& chat = stage.state->library().savedChats().records().front();
    for (const SavedChatMessage& message : chat.messages)
        EXPECT_FALSE(message.text.contains("Try again"));
    stage.state->panelChats().loadPanelChatFromHistory(chat.id);
    settle();
    EXPECT_TRUE(buttons().isEmpty());
}

} // namespace
} // namespace vorq
