#include "doubles/ui/TypedTurns.h"

#include <QAccessible>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

/// What went out with a prompt beside its words, in the bubble of the prompt.
class SentTextTest : public TypedTurns {
  protected:
    SentTextTest() { stage.capture.names[7] = "Firefox"; }

    void capture(const QString& text) {
        const auto done = stage.state->hotKeyContext().submitHotKeyContext(7, text, {});
        settle();
    }
    void succeed() {
        stage.transport.last().respond(200, "data: {\"text\":\"So.\",\"done\":true}\n\n");
        settle();
    }
    [[nodiscard]] QQuickItem* fold(const QString& name) {
        for (QQuickItem* item : stage.findAll("SentText"))
            for (QQuickItem* button : item->findChildren<QQuickItem*>())
                if (button->isVisible() && button->property("text").toString() == name)
                    return button;
        return nullptr;
    }
    [[nodiscard]] QStringList shown() {
        QStringList texts;
        for (QQuickItem* bubble : stage.findAll("UserBubble"))
            collect(*bubble, texts);
        return texts;
    }
    static void collect(const QQuickItem& item, QStringList& texts) {
        const QString text = item.property("text").toString();
        if (!item.isVisible()) return;
        if (!text.isEmpty()) texts += text;
        for (const QQuickItem* child : item.childItems())
            collect(*child, texts);
    }

    const QString show = "Show the text that was sent";
    const QString hide = "Hide the text that was sent";
};

TEST_F(SentTextTest, APressUnfoldsTheCaptureAndFoldsItAgain) {
    capture("Leaves are green.");
    EXPECT_THAT(shown(), testing::Contains("Attached: Text capture"));
    EXPECT_THAT(shown(), testing::Not(testing::Contains("Leaves are green.")));
    click(fold(show));
    EXPECT_THAT(shown(), testing::Contains("Leaves are green."));
    EXPECT_THAT(shown(), testing::Contains("Captured from Firefox"));
    EXPECT_THAT(shown(), testing::Contains("Attached: Text capture")) << "its words stay";
    click(fold(hide));
    EXPECT_THAT(shown(), testing::Not(testing::Contains("Leaves are green.")));
}

TEST_F(SentTextTest, APressOnTheEdgeOfTheBubbleUnfoldsItToo) {
    capture("Leaves are green.");
    QQuickItem* button = fold(show);
    ASSERT_TRUE(button);
    stage.drawFrame();
    QTest::mouseClick(stage.window.get(), Qt::LeftButton, {},
                      button->mapToScene({-7, -5}).toPoint());
    stage.settle(300);
    EXPECT_THAT(shown(), testing::Contains("Leaves are green."));
}

TEST_F(SentTextTest, KeysUnfoldItToo) {
    capture("Leaves are green.");
    succeed();
    QQuickItem* button = fold(show);
    ASSERT_TRUE(button);
    for (int press = 0; press < 10 && !button->hasActiveFocus(); ++press)
        QTest::keyClick(stage.window.get(), Qt::Key_Tab);
    ASSERT_TRUE(button->hasActiveFocus());
    QAccessibleInterface* element = QAccessible::queryAccessibleInterface(button);
    ASSERT_TRUE(element);
    EXPECT_EQ(element->role(), QAccessible::Button);
    EXPECT_EQ(element->text(QAccessible::Name), show);
    QTest::keyClick(stage.window.get(), Qt::Key_Return);
    stage.settle(300);
    EXPECT_THAT(shown(), testing::Contains("Leaves are green."));
}

TEST_F(SentTextTest, AFollowUpShowsWhatGoesWithItAsWell) {
    capture("Leaves are green.");
    succeed();
    enter("why?");
    EXPECT_EQ(stage.transport.last().json().value("selectedText").toString(), "Leaves are green.");
    ASSERT_EQ(stage.findAll("SentText").size(), 2);
}

TEST_F(SentTextTest, APromptThatWentAloneHasNothingToUnfold) {
    enter("why?");
    EXPECT_TRUE(stage.findAll("SentText").isEmpty());
    EXPECT_THAT(shown(), testing::ElementsAre("why?"));
}

TEST_F(SentTextTest, AnUnfoldedBubbleStaysWhereItWasPressed) {
    QStringList lines;
    for (int line = 0; line < 100; ++line)
        lines += u"Line %1 of what was captured."_s.arg(line);
    capture(lines.join('\n'));
    succeed();
    QQuickItem* button = fold(show);
    ASSERT_TRUE(button);
    const double y = button->mapToScene({}).y();
    click(button);
    EXPECT_NEAR(button->mapToScene({}).y(), y, 1);
}

TEST_F(SentTextTest, ASavedChatKeepsIt) {
    capture("Leaves are green.");
    succeed();
    enter("save chat");
    stage.state->panel().clearPanelChat();
    settle();
    stage.state->reloadLibrary();
    const QUuid id = stage.state->library().savedChats().records().front().id;
    stage.state->panelChats().loadPanelChatFromHistory(id);
    settle();
    click(fold(show));
    EXPECT_THAT(shown(), testing::Contains("Leaves are green."));
    EXPECT_THAT(shown(), testing::Contains("Captured from Firefox"));
}

/// The hot key over something that shows no text to others.
class NothingCapturedTest : public SentTextTest {
  protected:
    NothingCapturedTest() { stage.capture.names[7] = "Evince"; }

    const QString sentence = "Evince: no highlighted text was found. Highlight some first, or copy "
                             "it there and paste it here.";
};

TEST_F(NothingCapturedTest, OverAnOldChatItIsSaidWithWhatToDo) {
    enter("why?");
    succeed();
    capture("");
    EXPECT_EQ(stage.panel->notice(), sentence);
    EXPECT_EQ(stage.state->panel().highlightedText(), "");
    enter("and now?");
    EXPECT_EQ(stage.panel->notice(), "") << "it goes with the next word";
}

TEST_F(NothingCapturedTest, OfOneApplicationItIsSaidOnce) {
    enter("why?");
    succeed();
    capture("");
    enter("a");
    succeed();
    capture("");
    EXPECT_EQ(stage.panel->notice(), "");
    capture("text after all");
    succeed();
    capture("");
    EXPECT_EQ(stage.panel->notice(), sentence) << "once it gave text, nothing is news again";
}

TEST_F(NothingCapturedTest, TheGreetingSaysEnough) {
    capture("");
    EXPECT_EQ(stage.panel->notice(), "");
}

} // namespace
} // namespace vorq
