#include "doubles/ui/PanelStage.h"
#include "doubles/ui/Samples.h"
#include "ui/reply/ReplyView.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class CopyButtonTest : public testing::Test {
  protected:
    ReplyView& shown(const QString& text) {
        stage.answer(text);
        stage.show();
        hover({220, 720}); // the pointer rests where the test before left it
        stage.settle(400);
        m_view = qobject_cast<ReplyView*>(stage.find("ReplyView"));
        return *m_view;
    }
    [[nodiscard]] QQuickItem* button(const QString& name, int index = 0) {
        QList<QQuickItem*> found;
        for (QQuickItem* item : stage.findAll("CopyButton"))
            if (item->property("text").toString() == name) found += item;
        return found.value(index);
    }
    [[nodiscard]] QRectF plateOf(int block) const {
        return m_view->mapRectToScene(m_view->layout().blockRect(block));
    }
    static QRectF inScene(const QQuickItem& item) {
        return item.mapRectToScene(QRectF(0, 0, item.width(), item.height()));
    }
    // What is seen of a button; the room around it is for the finger.
    static QRectF seen(const QQuickItem& button) {
        const double slack = button.property("slack").toDouble();
        return inScene(button).adjusted(slack, slack, -slack, -slack);
    }
    void hover(QPointF inScene) {
        QTest::mouseMove(stage.window.get(), inScene.toPoint());
        stage.settle(250);
    }
    void expectToCoverNoText(const QQuickItem& button) const {
        const ReplyRange all{{}, m_view->layout().end()};
        const QRectF place = m_view->mapRectFromScene(seen(button)).adjusted(1, 1, -1, -1);
        for (int column = 0; column <= place.width(); ++column) {
            for (int row = 0; row <= place.height(); ++row) {
                const QPointF at = place.topLeft() + QPointF(column, row);
                ASSERT_FALSE(m_view->layout().covers(at, all)) << at.x() << ", " << at.y();
            }
        }
    }

    PanelStage stage;
    ReplyView* m_view = nullptr;
};

TEST_F(CopyButtonTest, EachStandsAtTheUpperRightCornerOfItsCode) {
    const ReplyView& view = shown("Some words.\n\n```\none\n```\n\nMore words.\n\n```\ntwo\n```");
    for (const int block : {1, 3}) {
        const QQuickItem* copy = button("Copy code", block / 2);
        ASSERT_TRUE(copy);
        const QRectF plate = plateOf(block);
        const QRectF at = seen(*copy);
        EXPECT_GT(at.right(), plate.right() - 14);
        EXPECT_LE(at.right(), plate.right());
        EXPECT_LT(std::abs(at.center().y() - plate.top()), 20);
    }
    EXPECT_EQ(view.layout().count(), 4);
}

TEST_F(CopyButtonTest, ComesWhileTheMouseIsOnTheTextOfTheReply) {
    const ReplyView& view = shown("# Title\n\nSome words of a paragraph.\n\nOther words.");
    const QQuickItem* copy = button("Copy reply");
    EXPECT_EQ(copy->opacity(), 0);
    hover(view.mapToScene(view.layout().cursorRect({1, 4}).center()));
    EXPECT_EQ(copy->opacity(), 1);
    hover({220, 720});
    EXPECT_EQ(copy->opacity(), 0);
}

TEST_F(CopyButtonTest, OfCodeComesWhileTheMouseIsOnTheCodeAndCopiesIt) {
    const ReplyView& view = shown("Some words.\n\n```\none\n```\n\n```\ntwo\n```");
    hover(view.mapToScene(view.layout().cursorRect({2, 1}).center()));
    const QQuickItem* second = button("Copy code", 1);
    EXPECT_EQ(second->opacity(), 1);
    EXPECT_EQ(button("Copy code", 0)->opacity(), 0) << "of the other code";
    const QPointF at = inScene(*second).center();
    hover(at);
    EXPECT_EQ(second->opacity(), 1) << "while the mouse goes to it";
    QTest::mouseClick(stage.window.get(), Qt::LeftButton, {}, at.toPoint());
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "two");
}

TEST_F(CopyButtonTest, CoversNoText) {
    const QString full = QString("full line of words ").repeated(8);
    const QString title = u"# لماذا تبدو الأوراق خضراء"_s;
    const QString code = "```\n" + QString(200, u'x') + "\n```";
    shown(title + "\n\n" + full + "\n\n" + code + "\n\n" + full);
    expectToCoverNoText(*button("Copy reply"));
    expectToCoverNoText(*button("Copy code"));
}

TEST_F(CopyButtonTest, TheTwoDoNotMeetWhereTheReplyBeginsWithCode) {
    shown("```\n" + QString(200, u'x') + "\n```\n\nWords.");
    expectToCoverNoText(*button("Copy reply"));
    expectToCoverNoText(*button("Copy code"));
    EXPECT_FALSE(inScene(*button("Copy reply")).intersects(inScene(*button("Copy code"))));
}

} // namespace
} // namespace vorq
