// How the mouse selects in what is said.

#include "doubles/ui/PanelStage.h"
#include "doubles/ui/Samples.h"
#include "ui/reply/ReplyView.h"

#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class SelectingTest : public testing::Test {
  protected:
    ReplyView& shown(const QString& text) {
        stage.answer(text);
        stage.show();
        stage.settle(400);
        return *qobject_cast<ReplyView*>(stage.find("ReplyView"));
    }
    static QRectF letter(const ReplyView& view, int block, qsizetype offset) {
        const ReplyRange range{{block, offset}, {block, offset + 1}};
        return view.mapRectToScene(view.layout().firstLineRect(range));
    }
    void doubleClick(QPointF at) {
        QTest::mouseDClick(stage.window.get(), Qt::LeftButton, {}, at.toPoint());
    }

    PanelStage stage;
};

TEST_F(SelectingTest, ADoubleClickAnywhereOnAWordSelectsIt) {
    const ReplyView& view = shown("First wommmm then more.\n\nيرى مم هنا");
    for (const int end : {6, 11})
        for (const double part : {0.1, 0.4, 0.6, 0.9}) {
            const QRectF at = letter(view, 0, end);
            doubleClick({at.left() + part * at.width(), at.center().y()});
            EXPECT_EQ(view.selectedText(), "wommmm") << end << ", " << part;
        }
    for (const double part : {0.1, 0.4, 0.6, 0.9}) {
        const QRectF at = letter(view, 1, 5);
        doubleClick({at.left() + part * at.width(), at.center().y()});
        EXPECT_EQ(view.selectedText(), u"مم"_s) << part;
    }
}

TEST_F(SelectingTest, ADoubleClickBehindALineSelectsItsLastWord) {
    const ReplyView& view = shown(QString("words ").repeated(30) + "end");
    const double y = letter(view, 0, 0).center().y();
    doubleClick({400, y});
    EXPECT_EQ(view.selectedText(), "words");
}

class PillRoomTest : public SelectingTest {
  protected:
    void pressAndMove(QPointF at) {
        const QPoint place = at.toPoint();
        QTest::mousePress(stage.window.get(), Qt::LeftButton, {}, place);
        QTest::mouseMove(stage.window.get(), place + QPoint(1, 0));
        QTest::mouseRelease(stage.window.get(), Qt::LeftButton, {}, place + QPoint(1, 0));
        stage.settle(20);
    }
};

TEST_F(PillRoomTest, APressBesideThePillKeepsTheSelection) {
    ReplyView& view = shown(samples::leaves);
    stage.list().setProperty("follows", false);
    stage.list().setProperty("contentY", 0);
    stage.settle(20);
    view.select({3, 0}, {3, 20});
    stage.settle(20);
    const QQuickItem* pill = stage.find("DeepenPill");
    ASSERT_TRUE(pill->isVisible());
    const QRectF frame = pill->mapRectToScene(QRectF(0, 0, pill->width(), pill->height()));
    for (const QPointF at : {QPointF(frame.left() - 5, frame.center().y()),
                             QPointF(frame.center().x(), frame.top() - 6),
                             QPointF(frame.center().x(), frame.bottom() + 4)}) {
        pressAndMove(at);
        ASSERT_TRUE(view.hasSelection()) << at.x() << ", " << at.y();
        EXPECT_TRUE(pill->isVisible());
    }
    EXPECT_EQ(stage.panel->attachments().count(), 0) << "and deepens nothing";
    QTest::mouseClick(stage.window.get(), Qt::LeftButton, {},
                      QPointF(frame.left() - 12, frame.center().y()).toPoint());
    EXPECT_FALSE(view.hasSelection());
}

class BubbleTest : public SelectingTest {
  protected:
    BubbleTest() {
        stage.say("one two three");
        stage.answer("A reply.");
        stage.show();
        stage.settle(400);
        m_words = stage.find("UserBubble")->findChild<QQuickItem*>("words");
    }
    [[nodiscard]] QString selected() const { return m_words->property("selectedText").toString(); }

    QQuickItem* m_words = nullptr;
};

TEST_F(BubbleTest, APressElsewhereDropsWhatIsSelectedInAMessage) {
    ASSERT_TRUE(m_words);
    doubleClick(m_words->mapToScene({4, 8}));
    EXPECT_EQ(selected(), "one");
    QTest::mouseClick(stage.window.get(), Qt::LeftButton, {}, {220, 500});
    EXPECT_EQ(selected(), "");
}

} // namespace
} // namespace vorq
