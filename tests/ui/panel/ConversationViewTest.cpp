#include "doubles/ui/PanelStage.h"
#include "doubles/ui/Samples.h"

#include "library/records/SavedChat.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class ConversationViewTest : public testing::Test {
  protected:
    [[nodiscard]] double y() { return stage.list().property("contentY").toDouble(); }
    [[nodiscard]] double bottom() { return stage.list().property("bottomY").toDouble(); }
    [[nodiscard]] bool follows() { return stage.list().property("follows").toBool(); }

    void wheel(int delta) { wheel({0, delta}, {220, 300}); }

    void wheel(QPoint delta, QPointF at) {
        QWheelEvent event(at, stage.window->mapToGlobal(at.toPoint()), {}, delta, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(stage.window.get(), &event);
        do
            stage.settle(50);
        while (stage.list().property("moving").toBool());
    }

    PanelStage stage;
};

TEST_F(ConversationViewTest, OpensAtTheLatestMessage) {
    for (int i = 0; i < 4; ++i)
        stage.answer(samples::leaves);
    stage.show();
    stage.settle(500);
    EXPECT_NEAR(y(), bottom(), 2);
}

TEST_F(ConversationViewTest, FollowsAGrowingReply) {
    stage.say("Hello");
    const QUuid id = stage.answer("Start.", true);
    stage.show();
    stage.settle(400);
    QString text = "Start.";
    for (int i = 0; i < 30; ++i) {
        text += u"\n\nParagraph %1 of the reply."_s.arg(i);
        stage.grow(id, text);
        stage.settle(5);
        EXPECT_NEAR(y(), bottom(), 2);
    }
    EXPECT_GT(bottom(), 100);
}

TEST_F(ConversationViewTest, ScrollingUpHoldsThePlaceToThePixel) {
    const QUuid id = stage.answer(QString(samples::leaves).repeated(3), true);
    stage.show();
    stage.settle(400);
    wheel(240);
    EXPECT_FALSE(follows());
    const double held = y();
    ASSERT_LT(held, bottom() - 10);
    QString text = QString(samples::leaves).repeated(3);
    for (int i = 0; i < 20; ++i) {
        text += u"\n\nMore text %1."_s.arg(i);
        stage.grow(id, text);
        stage.settle(5);
        EXPECT_EQ(y(), held);
    }
}

TEST_F(ConversationViewTest, TheButtonLeadsBackToTheEnd) {
    stage.answer(QString(samples::leaves).repeated(3));
    stage.show();
    stage.settle(400);
    QQuickItem* button = stage.find("JumpToLatest");
    EXPECT_FALSE(button->isVisible());
    wheel(360);
    ASSERT_TRUE(button->isVisible());
    QTest::mouseClick(stage.window.get(), Qt::LeftButton, {},
                      button->mapToScene({10, 10}).toPoint());
    stage.settle(500);
    EXPECT_TRUE(follows());
    EXPECT_NEAR(y(), bottom(), 2);
}

TEST_F(ConversationViewTest, WhatTheUserSendsIsShownFromAnywhere) {
    stage.answer(QString(samples::leaves).repeated(3));
    stage.show();
    stage.settle(400);
    wheel(360);
    stage.say("A new question");
    stage.settle(600);
    EXPECT_NEAR(y(), bottom(), 2);
}

TEST_F(ConversationViewTest, APromptAndItsPlaceholderAreShownFromAnywhere) {
    stage.answer(QString(samples::leaves).repeated(3));
    stage.show();
    stage.settle(400);
    wheel(360);
    ASSERT_FALSE(follows());
    stage.panel->setPrompt("A new question");
    stage.panel->send();
    stage.settle(600);
    EXPECT_TRUE(follows());
    EXPECT_NEAR(y(), bottom(), 2);
}

TEST_F(ConversationViewTest, AConversationThatBeginsAnewIsFollowed) {
    stage.answer(QString(samples::leaves).repeated(3));
    stage.show();
    stage.settle(400);
    wheel(360);
    ASSERT_FALSE(follows());
    stage.state->panel().clearPanelChat();
    stage.settle(100);
    EXPECT_TRUE(follows());
    const QUuid id = stage.answer("Start.", true);
    stage.grow(id, QString(samples::leaves).repeated(3));
    stage.settle(500);
    EXPECT_NEAR(y(), bottom(), 2);
}

TEST_F(ConversationViewTest, AnAnswerDoesNotTearTheReaderAway) {
    stage.answer(QString(samples::leaves).repeated(3));
    stage.show();
    stage.settle(400);
    wheel(360);
    const double held = y();
    stage.answer("A late answer.");
    stage.settle(500);
    EXPECT_EQ(y(), held);
}

TEST_F(ConversationViewTest, ResizingKeepsTheFootInView) {
    stage.answer(QString(samples::leaves).repeated(2));
    stage.show();
    stage.settle(400);
    stage.window->resize(900, 620);
    stage.settle(300);
    EXPECT_NEAR(y(), bottom(), 2);
    stage.window->resize(440, 750);
    stage.settle(300);
    EXPECT_NEAR(y(), bottom(), 2);
}

TEST_F(ConversationViewTest, ASidewaysTurnOfTheWheelIsSwallowed) {
    stage.answer(QString(samples::leaves).repeated(3));
    stage.show();
    stage.settle(400);
    const double before = y();
    wheel({240, 0}, {220, 100});
    wheel({240, 200}, {220, 100});
    EXPECT_EQ(stage.list().property("contentX").toDouble(), 0);
    EXPECT_EQ(y(), before) << "nor does its share upwards scroll";
    wheel({100, 200}, {220, 100});
    EXPECT_LT(y(), before) << "what goes more upwards than sideways scrolls";
    stage.list().setProperty("contentX", 7);
    EXPECT_EQ(stage.list().property("contentX").toDouble(), 0);
}

class SidewaysCodeTest : public ConversationViewTest {
  protected:
    // A reply that is nothing but code, wider than the panel.
    void showCode(int lines) {
        QString line;
        for (int number = 100; number < 170; ++number)
            line += QString::number(number);
        stage.answer("```\n" + line + QString("\ny").repeated(lines - 1) + "\n```");
        stage.show();
        stage.settle(400);
        m_reply = stage.find("ReplyView");
    }
    [[nodiscard]] QImage picture() { return stage.window->grabWindow(); }

    QQuickItem* m_reply = nullptr;
};

TEST_F(SidewaysCodeTest, LowCodeScrolls) {
    showCode(2);
    const QImage before = picture();
    wheel({-240, 60}, m_reply->mapToScene({40, 20}));
    EXPECT_NE(picture(), before);
}

TEST_F(SidewaysCodeTest, TallCodeScrollsAndTheListStays) {
    showCode(120);
    wheel(240);
    const double held = y();
    const QImage before = picture();
    wheel({-240, 120}, {100, 300});
    EXPECT_EQ(y(), held);
    EXPECT_NE(picture(), before);
}

class ScrollerTest : public ConversationViewTest {
  protected:
    void show() {
        stage.answer(QString(samples::leaves).repeated(3));
        stage.show();
        stage.settle(400);
    }
    void hover(QPoint at) {
        QTest::mouseMove(stage.window.get(), at);
        stage.settle(20);
    }
    [[nodiscard]] bool isShown() { return stage.find("Scroller")->property("shown").toBool(); }
};

TEST_F(ScrollerTest, IsThereWhileTheMouseIsAtTheRightEdge) {
    show();
    hover({200, 300});
    EXPECT_FALSE(isShown());
    hover({425, 300});
    EXPECT_TRUE(isShown());
    hover({413, 300});
    EXPECT_FALSE(isShown()) << "the strip is 18 wide";
    hover({425, 300});
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(stage.window.get(), &leave);
    EXPECT_FALSE(isShown());
}

TEST_F(ScrollerTest, IsGoneWhileThePanelIsDragged) {
    show();
    hover({200, 300});
    hover({425, 300});
    ASSERT_TRUE(isShown());
    stage.root().setProperty("isDockDragging", true);
    EXPECT_FALSE(isShown());
    stage.root().setProperty("isDockDragging", false);
    EXPECT_TRUE(isShown());
}

TEST_F(ScrollerTest, IsNotThereWithoutAnythingToScroll) {
    stage.answer("Short.");
    stage.show();
    stage.settle(200);
    hover({200, 300});
    hover({425, 300});
    EXPECT_FALSE(isShown());
}

TEST_F(ConversationViewTest, WhatComesInMakesWayForWhatGrowsAboveIt) {
    stage.show();
    stage.settle(100);
    const QUuid above = stage.answer("Start.", true);
    stage.settle(100);
    stage.say("Next");
    stage.settle(20);
    stage.grow(above, samples::leaves);
    stage.settle(800);
    QQuickItem* reply = stage.find("AssistantReply");
    QQuickItem* next = stage.find("UserBubble");
    EXPECT_GE(next->mapToScene({}).y(), reply->mapToScene({0, reply->height()}).y() + 12);
}

TEST_F(ConversationViewTest, ASavedChatStandsAtItsEndAtOnce) {
    stage.answer(samples::leaves);
    stage.show();
    stage.settle(400);
    SavedChat chat;
    for (int i = 0; i < 4; ++i)
        chat.messages.push_back({QUuid::createUuid(), "assistant", samples::leaves});
    stage.state->panel().restorePanelHistory(chat);
    EXPECT_TRUE(stage.panel->isRestoringHistory());
    ASSERT_TRUE(QTest::qWaitFor([this] { return !stage.panel->isRestoringHistory(); }));
    EXPECT_NEAR(y(), bottom(), 2) << "it does not glide there";
    for (QQuickItem* reply : stage.findAll("AssistantReply"))
        EXPECT_EQ(reply->parentItem()->parentItem()->opacity(), 1) << "nor does it fade in";
}

TEST_F(ConversationViewTest, TwoThousandMessagesKeepFewItems) {
    for (int i = 0; i < 2000; ++i)
        i % 2 == 0 ? stage.say("Question") : void(stage.answer("Answer **bold** text."));
    stage.show();
    stage.settle(500);
    EXPECT_LT(stage.findAll("ReplyView").size(), 100);
    EXPECT_NEAR(y(), bottom(), 2);
}

TEST_F(ConversationViewTest, APastedBookIsNotPaintedAsAWhole) {
    stage.say(u"word "_s.repeated(20'000));
    stage.show();
    stage.settle(500);
    QQuickItem* bubble = stage.find("UserBubble");
    ASSERT_GT(bubble->height(), 20'000);
    for (QQuickItem* item : stage.findAll("Squircle"))
        if (item->isVisible()) EXPECT_LT(item->height(), 2100);
    const QImage shown = stage.window->grabWindow();
    const QPointF inside = bubble->mapToScene({bubble->width() - 5, bubble->height() - 200});
    const QColor plate = shown.pixelColor((inside * shown.devicePixelRatio()).toPoint());
    EXPECT_GT(plate.blue(), plate.red() + 40) << "its plate is there all the same";
}

TEST_F(ConversationViewTest, AnIdlePanelDrawsNothing) {
    stage.answer(samples::leaves);
    stage.show();
    stage.settle(600);
    stage.find("Composer")->setProperty("enabled", false); // its caret blinks
    stage.settle(200);
    QSignalSpy frames(stage.window.get(), &QQuickWindow::afterRendering);
    stage.settle(400);
    EXPECT_EQ(frames.count(), 0);
}

// Counts how often a window is told that it has something to draw.
class FrameRequests final : public QObject {
  public:
    int count = 0;

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::UpdateRequest) ++count;
        return false;
    }
};

TEST_F(ConversationViewTest, AnIdleLongConversationAsksForNoFrame) {
    for (int i = 0; i < 1000; ++i)
        i % 2 == 0 ? stage.say("Question") : void(stage.answer("Answer **bold** text."));
    stage.show();
    stage.find("Composer")->setProperty("enabled", false); // its caret blinks
    stage.settle(1000);
    FrameRequests requests;
    stage.window->installEventFilter(&requests);
    stage.settle(400);
    EXPECT_EQ(requests.count, 0);
}

TEST_F(ConversationViewTest, ALabelOfAFollowUpIsSent) {
    stage.answer("Done.", false, VorqFollowUp{"More?", {"Yes", "No"}});
    stage.show();
    stage.settle(400);
    const QList<QQuickItem*> pills = stage.findAll("Pill");
    ASSERT_EQ(pills.size(), 2);
    QTest::mouseClick(stage.window.get(), Qt::LeftButton, {},
                      pills[1]->mapToScene({20, 10}).toPoint());
    EXPECT_EQ(stage.state->panel().messages().messages()[1].text, "No");
    stage.settle(50);
    EXPECT_TRUE(stage.findAll("Pill").isEmpty());
}

class KeyboardTest : public ConversationViewTest {
  protected:
    KeyboardTest() {
        stage.answer(QString(samples::leaves).repeated(2), false,
                     VorqFollowUp{"Which part?", {"Explain the green gap", "Quiz me"}});
        stage.show();
        stage.settle(500);
    }

    void click(QQuickItem* item) {
        QTest::mouseClick(stage.window.get(), Qt::LeftButton, {},
                          item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
        stage.settle(100);
    }
    [[nodiscard]] bool composerHasIt() {
        const QQuickItem* holder = stage.window->activeFocusItem();
        return holder && holder->inherits("QQuickTextEdit") &&
               !holder->property("readOnly").toBool();
    }
    void pressSpaceOn(QQuickItem* item) {
        item->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(stage.window.get(), Qt::Key_Space);
        stage.settle(400);
    }
};

TEST_F(KeyboardTest, AClickOnAButtonLeavesItWithTheComposer) {
    ASSERT_TRUE(composerHasIt());
    wheel(360);
    click(stage.find("JumpToLatest"));
    EXPECT_TRUE(composerHasIt()) << "after the way back to the end";
    stage.settle(400);
    click(stage.find("Pill"));
    EXPECT_TRUE(composerHasIt()) << "after a label";
    EXPECT_EQ(stage.state->panel().messages().messages()[1].text, "Explain the green gap");
}

TEST_F(KeyboardTest, AButtonThatGoesHandsItToTheComposer) {
    pressSpaceOn(stage.find("Pill"));
    EXPECT_EQ(stage.state->panel().messages().messages()[1].text, "Explain the green gap");
    EXPECT_TRUE(composerHasIt()) << "after a label";
    wheel(360);
    ASSERT_TRUE(stage.find("JumpToLatest")->isVisible());
    pressSpaceOn(stage.find("JumpToLatest"));
    EXPECT_TRUE(composerHasIt()) << "after the way back to the end";
}

TEST_F(KeyboardTest, TabLeadsFromTheLatestReplyUpwardsAndShowsWhereItIs) {
    stage.answer(QString(samples::leaves).repeated(2));
    stage.answer("The latest.", false, VorqFollowUp{"And now?", {"This", "That"}});
    stage.settle(500);
    stage.drawFrame(); // the list makes its items before a frame, however long that takes
    const auto isInView = [&](QQuickItem* item) {
        const QRectF at = item->mapRectToItem(&stage.list(), item->boundingRect());
        return at.intersects(QRectF(0, 0, stage.list().width(), stage.list().height()));
    };
    QStringList passed;
    for (int key = 0; key < 12; ++key) {
        QTest::keyClick(stage.window.get(), Qt::Key_Tab);
        stage.settle(20);
        stage.drawFrame();
        QQuickItem* item = stage.window->activeFocusItem();
        const QString text = item->property("text").toString();
        passed += text.isEmpty() ? item->property("raw").toString().left(11) : text;
        if (passed.size() == 1) continue;
        EXPECT_TRUE(QTest::qWaitFor([&] {
            stage.drawFrame();
            return isInView(item);
        })) << passed.back().toStdString();
    }
    EXPECT_EQ(passed.mid(0, 4), (QStringList{"Add files or notes", "This", "That", "The latest."}))
        << passed.join(", ").toStdString();
    EXPECT_EQ(passed[4], "# Why leave") << passed.join(", ").toStdString();
    EXPECT_TRUE(passed.contains("Explain the green gap")) << passed.join(", ").toStdString();
}

TEST_F(KeyboardTest, WhatIsTypedInTheConversationGoesToTheDraft) {
    stage.find("ReplyView")->forceActiveFocus(Qt::MouseFocusReason);
    QTest::keyClick(stage.window.get(), Qt::Key_Space);
    QTest::keyClick(stage.window.get(), Qt::Key_Delete);
    QTest::keyClick(stage.window.get(), 'k', Qt::ControlModifier);
    EXPECT_FALSE(composerHasIt());
    QTest::keyClick(stage.window.get(), 'H');
    EXPECT_TRUE(composerHasIt());
    QTest::keyClick(stage.window.get(), 'i');
    EXPECT_EQ(stage.panel->prompt().toLower(), "hi");
    stage.find("ReplyView")->forceActiveFocus(Qt::MouseFocusReason);
    QGuiApplication::clipboard()->setText(" there");
    QTest::keyClick(stage.window.get(), 'v', Qt::ControlModifier);
    EXPECT_EQ(stage.panel->prompt().toLower(), "hi there");
}

TEST_F(KeyboardTest, ShiftTabLeadsBackTheSameWay) {
    const QQuickItem* field = stage.window->activeFocusItem();
    QList<const QQuickItem*> there;
    for (int key = 0; key < 4; ++key) {
        QTest::keyClick(stage.window.get(), Qt::Key_Tab);
        there += stage.window->activeFocusItem();
    }
    for (int key = 2; key >= 0; --key) {
        QTest::keyClick(stage.window.get(), Qt::Key_Backtab, Qt::ShiftModifier);
        EXPECT_EQ(stage.window->activeFocusItem(), there[key]);
    }
    QTest::keyClick(stage.window.get(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(stage.window->activeFocusItem(), field);
}

TEST_F(ConversationViewTest, APlaceholderSaysHowFarItIs) {
    stage.work();
    stage.show();
    stage.settle(100);
    QQuickItem* line = stage.find("WorkingLine");
    EXPECT_EQ(line->property("label").toString(), "Working...");
    EXPECT_TRUE(line->isVisible());
}

} // namespace
} // namespace vorq
