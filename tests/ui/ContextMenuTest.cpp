#include "shell/MenuPress.h"
#include "ui/PanelStage.h"
#include "ui/reply/ReplyView.h"

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QMenu>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class ContextMenuTest : public testing::Test {
  protected:
    ContextMenuTest() {
        stage.say("A question of mine.");
        stage.answer("Leaves are green.");
        stage.show();
        stage.settle(400);
        for (QQuickItem* item : stage.findAll("QQuickTextEdit"))
            if (!item->property("readOnly").toBool()) m_field = item;
    }

    QMenu* openOn(QQuickItem* item, QPointF at = {20, 8}) {
        QTest::mouseClick(stage.window.get(), Qt::RightButton, {}, item->mapToScene(at).toPoint());
        return menu();
    }
    static QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    static QAction* entry(const QMenu& menu, const QString& text) {
        for (QAction* action : menu.actions())
            if (action->text() == text) return action;
        return nullptr;
    }
    static QString clipboard() { return QGuiApplication::clipboard()->text(); }

    PanelStage stage;
    QQuickItem* m_field = nullptr;
};

TEST_F(ContextMenuTest, TheDraftIsEditedByIt) {
    stage.panel->setPrompt("draft");
    stage.settle(20);
    QMenu* menu = openOn(m_field);
    ASSERT_TRUE(menu);
    EXPECT_FALSE(entry(*menu, "Copy")->isEnabled());
    EXPECT_TRUE(pressEntry(*menu, "Select All"));
    menu->close();
    menu = openOn(m_field);
    ASSERT_TRUE(menu);
    EXPECT_TRUE(pressEntry(*menu, "Cut"));
    menu->close();
    EXPECT_EQ(clipboard(), "draft");
    EXPECT_EQ(stage.panel->prompt(), "");
    QTest::keyClick(stage.window.get(), Qt::Key_Menu);
    ASSERT_TRUE(this->menu());
    EXPECT_TRUE(pressEntry(*this->menu(), "Paste"));
    EXPECT_EQ(stage.panel->prompt(), "draft");
}

TEST_F(ContextMenuTest, APictureIsPastedByItAsAClip) {
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QGuiApplication::clipboard()->setImage(picture);
    QMenu* menu = openOn(m_field);
    ASSERT_TRUE(menu);
    EXPECT_TRUE(pressEntry(*menu, "Paste"));
    EXPECT_EQ(stage.panel->attachments().count(), 1);
}

TEST_F(ContextMenuTest, AReplyIsCopiedAndDeepenedByIt) {
    auto* view = qobject_cast<ReplyView*>(stage.find("ReplyView"));
    QMenu* menu = openOn(view);
    ASSERT_TRUE(menu);
    EXPECT_FALSE(entry(*menu, "Deepen")->isEnabled());
    EXPECT_TRUE(pressEntry(*menu, "Copy reply"));
    EXPECT_EQ(clipboard(), "Leaves are green.");
    menu->close();
    view->select({0, 0}, {0, 6});
    menu = openOn(view);
    ASSERT_TRUE(menu);
    EXPECT_TRUE(view->hasSelection()) << "a press on it keeps it";
    EXPECT_TRUE(pressEntry(*menu, "Copy"));
    EXPECT_EQ(clipboard(), "Leaves");
    menu = openOn(view);
    ASSERT_TRUE(menu);
    EXPECT_TRUE(pressEntry(*menu, "Deepen"));
    EXPECT_EQ(stage.panel->attachments().count(), 1);
}

TEST_F(ContextMenuTest, ItGoesWithThePanel) {
    ASSERT_TRUE(openOn(m_field));
    stage.window->hide();
    EXPECT_FALSE(menu());
}

} // namespace
} // namespace vorq
