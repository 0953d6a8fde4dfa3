#include "doubles/ui/PanelStage.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class ComposerTest : public testing::Test {
  protected:
    ComposerTest() {
        stage.show();
        stage.settle(50);
    }

    void type(const QString& text) {
        for (const QChar character : text)
            QTest::keyClick(stage.window.get(), character.toLatin1());
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(stage.window.get(), key, modifiers);
    }
    [[nodiscard]] QString sent() {
        const auto& messages = stage.state->panel().messages().messages();
        return messages.empty() ? QString() : messages.front().text;
    }
    [[nodiscard]] QQuickItem* button(const QString& name) {
        for (QQuickItem* item : stage.findAll("IconButton"))
            if (item->property("text").toString() == name && item->isVisible()) return item;
        return nullptr;
    }
    void click(QQuickItem* item) {
        ASSERT_TRUE(item);
        stage.drawFrame();
        QTest::mouseClick(stage.window.get(), Qt::LeftButton, {},
                          item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
    }

    PanelStage stage;
};

TEST_F(ComposerTest, EnterSendsAndShiftEnterBreaksTheLine) {
    type("one");
    key(Qt::Key_Return, Qt::ShiftModifier);
    type("two");
    EXPECT_EQ(stage.panel->prompt(), "one\ntwo");
    key(Qt::Key_Return);
    EXPECT_EQ(sent(), "one\ntwo");
    EXPECT_EQ(stage.panel->prompt(), "");
}

TEST_F(ComposerTest, EnterOfTheKeypadSendsToo) {
    type("one");
    key(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(sent(), "one");
}

TEST_F(ComposerTest, EnterWhileComposingDoesNotSend) {
    type("a");
    QInputMethodEvent compose(u"にほ"_s, {});
    QCoreApplication::sendEvent(stage.window->activeFocusItem(), &compose);
    key(Qt::Key_Return);
    EXPECT_EQ(sent(), "");
    QInputMethodEvent commit;
    commit.setCommitString(u"日本"_s);
    QCoreApplication::sendEvent(stage.window->activeFocusItem(), &commit);
    EXPECT_EQ(stage.panel->prompt(), u"a日本"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(sent(), u"a日本"_s);
}

TEST_F(ComposerTest, UpBringsTheLastPromptBack) {
    type("one");
    key(Qt::Key_Return);
    key(Qt::Key_Up);
    EXPECT_EQ(stage.panel->prompt(), "one");
    type("x");
    EXPECT_EQ(stage.panel->prompt(), "onex");
}

TEST_F(ComposerTest, GrowsToFiveLinesAndNoFurther) {
    QQuickItem* composer = stage.find("Composer");
    const double least = composer->height();
    EXPECT_EQ(least, 52);
    stage.panel->setPrompt("1\n2\n3\n4\n5");
    stage.settle(20);
    const double five = composer->height();
    EXPECT_GT(five, least + 60);
    stage.panel->setPrompt("1\n2\n3\n4\n5\n6\n7");
    stage.settle(20);
    EXPECT_EQ(composer->height(), five);
    stage.panel->setPrompt("");
    stage.settle(20);
    EXPECT_EQ(composer->height(), least);
}

TEST_F(ComposerTest, WithLargeTextItDoesNotGrowByTheFirstLetter) {
    stage.look->setTextScale(2);
    stage.settle(50);
    const double empty = stage.find("Composer")->height();
    type("a");
    stage.settle(20);
    EXPECT_EQ(stage.find("Composer")->height(), empty);
}

TEST_F(ComposerTest, TypingCanBeUndoneInOneGo) {
    type("abc");
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(stage.panel->prompt(), "");
    key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(stage.panel->prompt(), "abc");
}

TEST_F(ComposerTest, TheSendButtonStopsAReplyThatRuns) {
    QQuickItem* send = button("Send");
    ASSERT_TRUE(send);
    EXPECT_FALSE(send->isEnabled());
    type("one");
    EXPECT_TRUE(send->isEnabled());
    click(send);
    EXPECT_EQ(send->property("text").toString(), "Stop");
    EXPECT_EQ(send->property("help").toString(), "Stop response");
    type("draft");
    EXPECT_EQ(stage.panel->prompt(), "draft");
    click(send);
    EXPECT_EQ(send->property("text").toString(), "Send");
    EXPECT_EQ(stage.panel->prompt(), "draft");
}

TEST_F(ComposerTest, TheAttachButtonOpensAndClosesTheTray) {
    QQuickItem* attach = button("Add files or notes");
    ASSERT_TRUE(attach);
    click(attach);
    EXPECT_TRUE(stage.panel->tray()->isShown());
    EXPECT_EQ(attach->property("text").toString(), "Close");
    EXPECT_EQ(attach->property("help").toString(), "Close attachment options");
    click(attach);
    EXPECT_FALSE(stage.panel->tray()->isShown());
}

class TrayDismissTest : public ComposerTest {
  protected:
    TrayDismissTest() {
        stage.answer("A reply.");
        stage.panel->setPrompt("a draft");
        stage.panel->tray()->setShown(true);
        stage.settle(300);
    }
    void expectToCloseIt(QPoint at, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mousePress(stage.window.get(), button, {}, at);
        EXPECT_FALSE(stage.panel->tray()->isShown()) << at.x() << ", " << at.y();
        QTest::mouseRelease(stage.window.get(), button, {}, at);
        EXPECT_FALSE(stage.panel->tray()->isShown()) << at.x() << ", " << at.y();
    }
    QPoint inComposer(QPointF at) { return stage.find("Composer")->mapToScene(at).toPoint(); }
};

TEST_F(TrayDismissTest, APressOnTheConversationClosesTheTray) {
    expectToCloseIt({220, 300});
}

TEST_F(TrayDismissTest, APressOnTheEdgeOfThePanelClosesIt) {
    expectToCloseIt({3, 300});
}

TEST_F(TrayDismissTest, APressOnTheGroundOfTheComposerClosesIt) {
    expectToCloseIt(inComposer({200, 3}));
}

TEST_F(TrayDismissTest, APressInTheDraftClosesItAndPutsTheCaretThere) {
    expectToCloseIt(inComposer({55, 26}));
    EXPECT_LT(stage.window->activeFocusItem()->property("cursorPosition").toInt(), 3);
}

TEST_F(TrayDismissTest, APressOnAReplyClosesItAndSelectsThere) {
    QQuickItem* reply = stage.find("ReplyView");
    const QPoint at = reply->mapToScene({10, 8}).toPoint();
    QTest::mouseDClick(stage.window.get(), Qt::LeftButton, {}, at);
    EXPECT_FALSE(stage.panel->tray()->isShown());
    EXPECT_TRUE(reply->property("hasSelection").toBool());
}

TEST_F(TrayDismissTest, APressOfAnotherButtonClosesIt) {
    expectToCloseIt({3, 300}, Qt::MiddleButton);
}

TEST_F(ComposerTest, APressOnTheTraysGroundLeavesItOpen) {
    stage.panel->tray()->setShown(true);
    stage.settle(300);
    QQuickItem* tray = stage.find("AttachTray");
    QTest::mouseClick(stage.window.get(), Qt::LeftButton, {}, tray->mapToScene({3, 60}).toPoint());
    EXPECT_TRUE(stage.panel->tray()->isShown());
}

TEST_F(ComposerTest, AClipIsTakenOff) {
    PromptAttachment file;
    file.fileName = "a.txt";
    stage.panel->attachments().append(file);
    stage.settle(100);
    click(button("Remove a.txt"));
    EXPECT_EQ(stage.panel->attachments().count(), 0);
}

TEST_F(ComposerTest, APictureIsPastedAsAClipAndTextAsText) {
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(Qt::red);
    QGuiApplication::clipboard()->setImage(image);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(stage.panel->attachments().count(), 1);
    ASSERT_TRUE(QTest::qWaitFor([this] { return stage.reader.underWay() == 1; }));
    EXPECT_EQ(QImage::fromData(stage.reader.readings()[0]->picture).size(), image.size());
    QGuiApplication::clipboard()->setText("words");
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(stage.panel->prompt(), "words");
}

TEST_F(ComposerTest, CopyWithNothingSelectedTakesTheLastReply) {
    QGuiApplication::clipboard()->setText("of the user");
    stage.answer("Hello 👋, Vorq here…");
    stage.say("a question");
    stage.work();
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "of the user");
    stage.answer("**first** reply");
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "**first** reply");
    const QUuid next = stage.work();
    stage.grow(next, "second so");
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "second so");
}

TEST_F(ComposerTest, CopyWithAWordSelectedTakesTheWord) {
    stage.answer("a reply");
    type("draft");
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "draft");
}

TEST_F(ComposerTest, TabLeadsToTheButtons) {
    type("a");
    key(Qt::Key_Tab);
    EXPECT_EQ(stage.window->activeFocusItem(), button("Add files or notes"));
    key(Qt::Key_Tab);
    EXPECT_EQ(stage.window->activeFocusItem(), button("Send"));
}

TEST_F(ComposerTest, TabLeadsOnWhereThereIsNothingToSend) {
    stage.answer("a reply", false, VorqFollowUp{.question = "Which?", .labels = {"this one"}});
    stage.settle(50);
    key(Qt::Key_Tab);
    EXPECT_EQ(stage.window->activeFocusItem(), button("Add files or notes"));
    bool isReached = false;
    for (int press = 0; press < 5 && !isReached; ++press) {
        key(Qt::Key_Tab);
        isReached = stage.window->activeFocusItem() == stage.find("Pill");
    }
    EXPECT_TRUE(isReached);
}

TEST_F(ComposerTest, KeysSelectFromWhereTheCursorIs) {
    type("first second third");
    QQuickItem* edit = stage.find("PromptField")->property("input").value<QQuickItem*>();
    const auto selected = [&] { return edit->property("selectedText").toString(); };
    key(Qt::Key_Left, Qt::ShiftModifier);
    key(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "rd");
    key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "d");
    key(Qt::Key_Left, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(selected(), "third");
    key(Qt::Key_Home, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "first second third");
    key(Qt::Key_Right);
    EXPECT_EQ(selected(), "");
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selected(), "first second third");
    key(Qt::Key_X);
    EXPECT_EQ(stage.panel->prompt(), "x");
}

TEST_F(ComposerTest, KeysSelectLineByLineInTheSameColumn) {
    type("first");
    key(Qt::Key_Return, Qt::ShiftModifier);
    key(Qt::Key_Return, Qt::ShiftModifier);
    type("third");
    QQuickItem* edit = stage.find("PromptField")->property("input").value<QQuickItem*>();
    stage.drawFrame();
    key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(edit->property("selectionStart"), 6);
    key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_GE(edit->property("selectionStart").toInt(), 4) << "in the column of the end";
    key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(edit->property("selectionStart"), 0);
    EXPECT_EQ(edit->property("selectionEnd"), 12);
}

} // namespace
} // namespace vorq
