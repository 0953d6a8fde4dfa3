#include "ui/reply/ReplyView.h"
#include "doubles/ui/PanelStage.h"
#include "doubles/ui/Samples.h"
#include "ui/reply/ReplyCanvas.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class ReplyViewTest : public testing::Test {
  protected:
    ReplyView& shown(const QString& text) {
        m_id = stage.answer(text);
        stage.show();
        stage.settle(400);
        return *qobject_cast<ReplyView*>(stage.find("ReplyView"));
    }

    static QPoint inWindow(ReplyView& view, ReplyPosition position) {
        return view.mapToScene(view.layout().cursorRect(position).center()).toPoint();
    }

    static QString clipboard() { return QGuiApplication::clipboard()->text(); }

    PanelStage stage;
    QUuid m_id;
};

TEST_F(ReplyViewTest, StreamingBuildsOnlyWhatIsNew) {
    ReplyView& view = shown("One.\n\nTwo.");
    const int before = view.layout().builtBlocks();
    stage.grow(m_id, "One.\n\nTwo.\n\nThree.");
    stage.settle();
    EXPECT_EQ(view.layout().builtBlocks(), before + 1);
    EXPECT_EQ(view.implicitHeight(), view.layout().height());
}

TEST_F(ReplyViewTest, DraggingSelectsAcrossBlocksAndShowsThePill) {
    ReplyView& view = shown("First block of text.\n\nSecond block of text.");
    QTest::mousePress(stage.window.get(), Qt::LeftButton, {}, inWindow(view, {0, 6}));
    QTest::mouseMove(stage.window.get(), inWindow(view, {1, 6}));
    QTest::mouseRelease(stage.window.get(), Qt::LeftButton, {}, inWindow(view, {1, 6}));
    EXPECT_EQ(view.selectedText(), "block of text.\nSecond");
    EXPECT_TRUE(stage.panel->selection()->hasSelection());
    EXPECT_TRUE(stage.find("DeepenPill")->isVisible());
}

TEST_F(ReplyViewTest, PressingThePillTakesTheExcerptWithoutTakingTheKeyboard) {
    ReplyView& view = shown(samples::leaves);
    view.select({0, 0}, {0, 3});
    stage.settle();
    QQuickItem* pill = stage.find("DeepenPill");
    QQuickItem* before = stage.window->activeFocusItem();
    const QPoint at = pill->mapToScene({10, 10}).toPoint();
    QTest::mousePress(stage.window.get(), Qt::LeftButton, {}, at);
    EXPECT_EQ(stage.window->activeFocusItem(), before);
    EXPECT_TRUE(view.hasSelection());
    QTest::mouseRelease(stage.window.get(), Qt::LeftButton, {}, at);
    EXPECT_FALSE(view.hasSelection());
    ASSERT_EQ(stage.panel->attachments().count(), 1);
    EXPECT_EQ(stage.panel->attachments().attachments()[0].textContent, "Why");
    EXPECT_FALSE(stage.find("DeepenPill")->isVisible());
}

TEST_F(ReplyViewTest, AClickElsewhereDropsTheSelection) {
    ReplyView& view = shown("Some text.");
    view.select({0, 0}, {0, 4});
    QTest::mouseClick(stage.window.get(), Qt::LeftButton, {}, {220, 500});
    EXPECT_FALSE(view.hasSelection());
    EXPECT_FALSE(stage.panel->selection()->hasSelection());
}

TEST_F(ReplyViewTest, TellsItsGlyphsFromTheRoomBesideThem) {
    const ReplyView& view = shown("Short.\n\nA second line that is somewhat longer.");
    const QRectF last = view.layout().firstLineRect({{0, 5}, {0, 6}});
    const auto has = [&](QPointF at) { return view.hasGlyphsAt(view.mapToGlobal(at)); };
    EXPECT_TRUE(has(last.center()));
    EXPECT_TRUE(has(last.center() + QPointF(10, 0))) << "just behind the last";
    EXPECT_TRUE(has(QPointF(0, last.center().y())));
    EXPECT_TRUE(has(QPointF(3, last.bottom() + 4))) << "between the lines";
    EXPECT_FALSE(has(last.center() + QPointF(60, 0)));
}

TEST_F(ReplyViewTest, ThePillGoesWhereItsLineIsScrolledOutOfView) {
    ReplyView& view = shown(QString(samples::leaves).repeated(2));
    const int last = view.layout().count() - 1;
    view.select({last, 0}, {last, 6});
    stage.settle();
    QQuickItem* pill = stage.find("DeepenPill");
    ASSERT_TRUE(pill->isVisible());
    QQuickItem& list = stage.list();
    const double end = list.property("contentY").toDouble();
    list.setProperty("contentY", end - 60);
    stage.settle();
    EXPECT_FALSE(pill->isVisible()) << "not over the composer";
    list.setProperty("contentY", end);
    stage.settle();
    EXPECT_TRUE(pill->isVisible());
    view.select({0, 0}, {0, 6});
    stage.settle();
    EXPECT_FALSE(pill->isVisible()) << "nor above the panel";
}

TEST_F(ReplyViewTest, TwoClicksSelectAWordAndThreeABlock) {
    ReplyView& view = shown("First block.\n\nSecond block.");
    QTest::mouseDClick(stage.window.get(), Qt::LeftButton, {}, inWindow(view, {1, 2}));
    EXPECT_EQ(view.selectedText(), "Second");
    QTest::mouseClick(stage.window.get(), Qt::LeftButton, {}, inWindow(view, {1, 2}));
    EXPECT_EQ(view.selectedText(), "Second block.");
}

TEST_F(ReplyViewTest, KeysSelectAndCopy) {
    ReplyView& view = shown("One **two**.\n\nThree.");
    view.forceActiveFocus();
    QTest::keyClick(stage.window.get(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), "One **two**.\n\nThree.");
    for (int i = 0; i < 7; ++i)
        QTest::keyClick(stage.window.get(), Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(stage.window.get(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard(), "One two");
    QTest::keyClick(stage.window.get(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(view.selectedText(), "One two.\nThree.");
}

TEST_F(ReplyViewTest, ARingShowsWhatTabLedToAndNotWhatWasClicked) {
    ReplyView& view = shown("One two three.");
    QTest::mouseClick(stage.window.get(), Qt::LeftButton, {}, inWindow(view, {0, 2}));
    EXPECT_TRUE(view.hasActiveFocus());
    EXPECT_FALSE(view.visualFocus());
    stage.root().forceActiveFocus();
    QMetaObject::invokeMethod(&stage.root(), "focusPrompt");
    view.forceActiveFocus(Qt::TabFocusReason);
    EXPECT_TRUE(view.visualFocus());
    QTest::mouseClick(stage.window.get(), Qt::LeftButton, {}, inWindow(view, {0, 2}));
    EXPECT_FALSE(view.visualFocus());
}

TEST_F(ReplyViewTest, ByKeysAloneAnExcerptIsDeepened) {
    ReplyView& view = shown("One two three.\n\nFour five.");
    view.forceActiveFocus(Qt::TabFocusReason);
    const auto key = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(stage.window.get(), key, modifiers);
    };
    EXPECT_TRUE(view.caret().isEmpty());
    key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_FALSE(view.hasSelection());
    EXPECT_EQ(view.caret(), view.layout().cursorRect({0, 3}));
    key(Qt::Key_Right);
    key(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(view.selectedText(), "two");
    EXPECT_TRUE(view.caret().isEmpty()) << "the selection shows where it is";
    key(Qt::Key_Return);
    ASSERT_EQ(stage.panel->attachments().count(), 1);
    EXPECT_EQ(stage.panel->attachments().attachments().front().textContent, "two");
    EXPECT_FALSE(view.hasActiveFocus()) << "the prompt is next";
    EXPECT_TRUE(view.caret().isEmpty());
}

TEST_F(ReplyViewTest, KeysReachLinksAndOtherLines) {
    ReplyView& view = shown("One [two](https://a.example).\n\nFour.");
    QSignalSpy followed(&view, &ReplyView::linkActivated);
    view.forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(stage.window.get(), Qt::Key_Right);
    QTest::keyClick(stage.window.get(), Qt::Key_Return);
    EXPECT_EQ(followed.count(), 0);
    for (int step = 0; step < 4; ++step)
        QTest::keyClick(stage.window.get(), Qt::Key_Right);
    QTest::keyClick(stage.window.get(), Qt::Key_Return);
    ASSERT_EQ(followed.count(), 1);
    EXPECT_EQ(followed[0][0].toString(), "https://a.example");
    QTest::keyClick(stage.window.get(), Qt::Key_Down);
    EXPECT_EQ(view.selection().cursor().block, 1);
    QTest::keyClick(stage.window.get(), Qt::Key_Home);
    EXPECT_EQ(view.selection().cursor(), (ReplyPosition{1, 0}));
    QTest::keyClick(stage.window.get(), Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(view.selectedText(), "One two.\n");
    QTest::keyClick(stage.window.get(), Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(stage.window.get(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(view.selectedText(), "Four.");
}

TEST_F(ReplyViewTest, CodeIsCopiedAsItWasWritten) {
    ReplyView& view = shown("```\na == b\n    c\n```\n\nText.\n\n```\nsecond\n```");
    EXPECT_EQ(view.codes().codes().size(), 2);
    view.copyCode(0);
    EXPECT_EQ(clipboard(), "a == b\n    c");
    EXPECT_EQ(view.codeAt(1), "second");
    EXPECT_EQ(view.codeAt(2), "");
    EXPECT_EQ(stage.findAll("CopyButton").size(), 3);
}

TEST_F(ReplyViewTest, ASelectionOutlivesWhatGrowsBelowIt) {
    ReplyView& view = shown("One.\n\nTwo.");
    view.select({0, 0}, {0, 3});
    stage.grow(m_id, "One.\n\nTwo and more.\n\nThree.");
    EXPECT_EQ(view.selectedText(), "One");
    stage.grow(m_id, "X");
    EXPECT_FALSE(view.hasSelection());
}

TEST_F(ReplyViewTest, ASecondReplyTakesTheSelectionOver) {
    ReplyView& first = shown("One text.");
    stage.answer("Other text.");
    stage.settle(400);
    auto* second = qobject_cast<ReplyView*>(stage.findAll("ReplyView").value(1));
    first.select({0, 0}, {0, 3});
    second->select({0, 0}, {0, 5});
    EXPECT_FALSE(first.hasSelection());
    EXPECT_EQ(stage.panel->selection()->selectedText(), "Other");
}

TEST_F(ReplyViewTest, AHugeReplyIsSetInSlicesAndPaintedInAStrip) {
    ReplyView& view = shown(QString("Many words in a paragraph. ").repeated(400) + "\n\n" +
                            QString("word ").repeated(30000));
    for (int i = 0; i < 2000 && !view.layout().isDone(); ++i)
        stage.settle(5);
    EXPECT_TRUE(view.layout().isDone());
    EXPECT_GT(view.implicitHeight(), 20000);
    EXPECT_LT(stage.find("ReplyCanvas")->height(), 2000);
}

// A growing reply is painted in parts; nothing may be left of what stood there before.
TEST_F(ReplyViewTest, AGrownReplyLooksAsOneThatWasThereAtOnce) {
    const QString block = "## Part\n\nSome words of a paragraph, as wide as the panel and more.\n\n"
                          "- one\n- two\n\n```\ncode\n```\n\n| a | b |\n|---|---|\n| c | d |\n\n";
    const QString whole = block.repeated(5).trimmed();
    const QUuid id = stage.work();
    stage.show();
    for (qsizetype length = 40; length < whole.size(); length += 40) {
        stage.grow(id, AssistantReplyDocument::committedSource(whole.left(length), false));
        stage.settle(5);
    }
    VorqMessage message = *stage.state->panel().messages().find(id);
    message.text = AssistantReplyDocument::committedSource(whole, true);
    message.isTyping = false;
    stage.state->panel().messages().update(message);
    stage.settle(600);
    PanelStage other;
    other.answer(message.text);
    other.show();
    other.settle(600);
    const auto picture = [](PanelStage& of) {
        of.find("Composer")->setProperty("enabled", false); // its caret blinks
        of.settle(200);
        return of.window->grabWindow().copy(0, 0, 440, 500);
    };
    EXPECT_EQ(picture(stage), picture(other));
}

// While the window is hidden nothing is painted, so all of it is once it comes back.
TEST_F(ReplyViewTest, AReplyThatGrewUnseenIsPaintedWhole) {
    ReplyView& view = shown("One.\n\nTwo.");
    const auto picture = [this, &view] {
        const QRectF place = view.mapRectToScene(QRectF(0, 0, view.width(), 20));
        return stage.window->grabWindow().copy(place.toRect());
    };
    const QImage before = picture();
    stage.window->hide();
    stage.window->releaseResources();
    stage.grow(m_id, "One.\n\nTwo.\n\nThree.");
    stage.settle(20);
    stage.window->show();
    stage.settle(600);
    EXPECT_EQ(picture(), before);
}

TEST_F(ReplyViewTest, OnlyCodeInViewHasButtons) {
    const QString code = "```\n" + QString("line\n").repeated(40) + "```\n\n";
    ReplyView& view = shown(code.repeated(12));
    EXPECT_GT(view.codes().codes().front().number, 6);
    EXPECT_LT(view.codes().codes().size(), 6);
    stage.list().setProperty("contentY", 0);
    stage.settle(20);
    ASSERT_GE(view.codes().codes().size(), 1);
    EXPECT_LT(view.codes().codes().size(), 6);
    EXPECT_EQ(view.codes().codes().front().number, 0);
}

TEST_F(ReplyViewTest, ARemovedReplyLeavesNoSelectionBehind) {
    ReplyView& view = shown("Some text.");
    view.select({0, 0}, {0, 4});
    constexpr int patience = 30'000; // milliseconds: the page lets go of the reply in its own time
    stage.state->panel().messages().clear();
    EXPECT_TRUE(QTest::qWaitFor(
        [this] {
            stage.settle(20);
            return !stage.panel->selection()->hasSelection();
        },
        patience));
}

} // namespace
} // namespace vorq
