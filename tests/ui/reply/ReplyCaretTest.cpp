// The caret of a reply: where keys move it, and what becomes of it.

#include "doubles/ui/PanelStage.h"
#include "doubles/ui/Samples.h"
#include "ui/reply/ReplyView.h"

#include <QApplication>
#include <QMenu>
#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class ReplyCaretTest : public testing::Test {
  protected:
    ReplyView& shown(const QString& text) {
        m_id = stage.answer(text);
        stage.show();
        stage.settle(400);
        key(Qt::Key_Tab);
        key(Qt::Key_Tab);
        auto* view = qobject_cast<ReplyView*>(stage.window->activeFocusItem());
        if (!view) qFatal("Tab does not lead to the reply");
        return *view;
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(stage.window.get(), key, modifiers);
        stage.settle(10);
    }

    PanelStage stage;
    QUuid m_id;
};

const QString wideLine = u"```\n"_s + QString(200, u'x') + u"\n```"_s;

TEST_F(ReplyCaretTest, WideCodeFollowsItSideways) {
    const ReplyView& view = shown(wideLine);
    const double left = ReplyStyle::platePadding;
    const double right = view.width() - ReplyStyle::platePadding;
    key(Qt::Key_Right);
    key(Qt::Key_End);
    EXPECT_EQ(view.selection().cursor(), view.layout().end());
    EXPECT_GE(view.caret().left(), left);
    EXPECT_LE(view.caret().right(), right + 1);
    key(Qt::Key_Left);
    EXPECT_GT(view.caret().right(), right - 20) << "no further than it must";
    key(Qt::Key_Home);
    EXPECT_EQ(view.caret().left(), left);
    for (int press = 0; press < 120; ++press)
        QTest::keyClick(stage.window.get(), Qt::Key_Right, Qt::ShiftModifier);
    const QRectF end = view.layout().cursorRect(view.selection().cursor());
    EXPECT_EQ(view.selection().cursor().offset, 120);
    EXPECT_GE(end.left(), left);
    EXPECT_LE(end.right(), right + 1);
}

TEST_F(ReplyCaretTest, IsClampedWhereItsBlockGetsShorter) {
    const ReplyView& view = shown("A first paragraph.\n\nThe second.");
    key(Qt::Key_Right);
    key(Qt::Key_End);
    ASSERT_EQ(view.selection().cursor().offset, 18);
    stage.grow(m_id, "A first.\n\nThe second, which is longer now.");
    stage.settle(20);
    key(Qt::Key_Left);
    EXPECT_EQ(view.selection().cursor(), (ReplyPosition{0, 7}));
}

class ReplyMenuKeyTest : public ReplyCaretTest {
  protected:
    // Where the menu that the key opens has its corner, in the view.
    QPointF menuAt(const ReplyView& view) {
        key(Qt::Key_Menu);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu) return {};
        const QPointF at = view.mapFromGlobal(menu->windowHandle()->position());
        menu->close();
        return at;
    }
};

TEST_F(ReplyMenuKeyTest, OpensAtTheEndOfWhatIsSelectedThatTheUserMoved) {
    ReplyView& view = shown(samples::leaves);
    stage.list().setProperty("follows", false);
    stage.list().setProperty("contentY", stage.list().property("topY"));
    stage.settle(20);
    view.select({1, 0}, {1, 6});
    const QRectF end = view.layout().cursorRect({1, 6});
    EXPECT_LT((menuAt(view) - end.bottomLeft()).manhattanLength(), 3);
}

TEST_F(ReplyMenuKeyTest, OpensInViewOverAReplyThatIsLongerThanThePanel) {
    const ReplyView& view = shown(QString(samples::leaves).repeated(4));
    ASSERT_GT(view.viewTop(), 100) << "its end is in view";
    const QPointF at = menuAt(view);
    EXPECT_GE(at.y(), view.viewTop() - 1);
    EXPECT_LE(at.y(), view.viewTop() + view.viewHeight() + 1);
}

} // namespace
} // namespace vorq
