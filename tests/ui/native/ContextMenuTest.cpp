#include "areas/AppearanceSettings.h"
#include "doubles/shell/MenuPress.h"
#include "doubles/ui/PanelStage.h"
#include "ui/reply/ReplyView.h"

#include <QAccessible>
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

TEST_F(ContextMenuTest, ItHasTheColoursOfThePanelNotOfTheDesktop) {
    for (const bool isDark : {true, false}) {
        stage.state->appearance().setPanelAppearance(isDark ? PanelAppearance::Current
                                                            : PanelAppearance::White);
        stage.settle(50);
        QMenu* menu = openOn(stage.find("ReplyView"));
        ASSERT_TRUE(menu);
        const QRect first = menu->actionGeometry(entry(*menu, "Copy reply"));
        EXPECT_EQ(first.height(), 30);
        const auto ground = [&](int y) {
            return menu->grab().toImage().pixelColor(first.right() - 4, y);
        };
        const int top = menu->actionGeometry(entry(*menu, "Deepen")).top() + 2;
        EXPECT_NEAR(ground(top).blue(), isDark ? 0x41 : 0xFF, 1);
        QTest::keyClick(menu, Qt::Key_Down);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return ground(first.center().y()) == QColor(isDark ? "#4A65EA" : "#3F5AE6"); }));
        menu->close();
    }
}

TEST_F(ContextMenuTest, ItsEdgeAndItsLinesStandOutFromItsGround) {
    for (const bool isDark : {true, false}) {
        stage.state->appearance().setPanelAppearance(isDark ? PanelAppearance::Current
                                                            : PanelAppearance::White);
        stage.settle(50);
        QMenu* menu = openOn(stage.find("ReplyView"));
        ASSERT_TRUE(menu);
        const QImage shown = menu->grab().toImage();
        const int middle = shown.width() / 2;
        const auto step = [&](int y, int beside) {
            return std::abs(qGray(shown.pixel(middle, y)) - qGray(shown.pixel(middle, beside)));
        };
        EXPECT_GT(step(0, 3), 12) << "its edge";
        const QRect line = menu->actionGeometry(menu->actions().at(1));
        EXPECT_GT(step(line.center().y(), line.top() + 1), 12) << "a line between its entries";
        EXPECT_GE(shown.width(), 160) << "no narrow slip";
        menu->close();
    }
}

TEST_F(ContextMenuTest, ShiftWithF10StandsInForTheKeyOfMenus) {
    m_field->forceActiveFocus();
    QTest::keyClick(stage.window.get(), Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_TRUE(menu());
    EXPECT_TRUE(entry(*menu(), "Paste"));
    menu()->close();
    stage.find("ReplyView")->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(stage.window.get(), Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_TRUE(menu());
    EXPECT_TRUE(entry(*menu(), "Copy reply"));
}

TEST_F(ContextMenuTest, LettersAndHomeAndEndLeadToItsEntries) {
    stage.panel->setPrompt("draft");
    stage.settle(20);
    m_field->forceActiveFocus();
    QTest::keyClick(stage.window.get(), Qt::Key_Menu);
    ASSERT_TRUE(menu());
    const auto activeAfter = [&](Qt::Key key) {
        QTest::keyClick(menu(), key);
        return menu()->activeAction()->text();
    };
    EXPECT_EQ(menu()->activeAction()->text(), "Paste") << "nothing to undo";
    EXPECT_EQ(activeAfter(Qt::Key_S), "Select All");
    EXPECT_EQ(activeAfter(Qt::Key_P), "Paste");
    EXPECT_EQ(activeAfter(Qt::Key_End), "Select All");
    EXPECT_EQ(activeAfter(Qt::Key_Home), "Paste");
    EXPECT_EQ(activeAfter(Qt::Key_C), "Paste") << "Copy cannot be chosen";
}

TEST_F(ContextMenuTest, WhatIsSelectedInTheUsersOwnMessageIsCopiedByKeysAlone) {
    QQuickItem* words = stage.find("UserBubble")->findChild<QQuickItem*>("words");
    ASSERT_TRUE(words);
    QTest::mouseDClick(stage.window.get(), Qt::LeftButton, {}, words->mapToScene({4, 8}).toPoint());
    QTest::keyClick(stage.window.get(), Qt::Key_Menu);
    ASSERT_TRUE(menu());
    ASSERT_TRUE(menu()->activeAction());
    EXPECT_EQ(menu()->activeAction()->text(), "Copy");
    QTest::keyClick(menu(), Qt::Key_Return);
    EXPECT_EQ(clipboard(), "A");
}

TEST_F(ContextMenuTest, InHighContrastItIsReadableAndHasAnEdge) {
    stage.look->setDesktop({.wantsHighContrast = true});
    stage.settle(50);
    QMenu* menu = openOn(m_field);
    ASSERT_TRUE(menu);
    const QImage shown = menu->grab().toImage();
    EXPECT_EQ(shown.pixelColor(shown.width() / 2, 0), QColor(Qt::white));
    EXPECT_EQ(shown.pixelColor(shown.width() / 2, 3), QColor(Qt::black));
}

TEST_F(ContextMenuTest, OpenedByTheKeyItBeginsAtItsFirstEntryAndTellsItsEntries) {
    stage.find("ReplyView")->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(stage.window.get(), Qt::Key_Menu);
    QMenu* menu = this->menu();
    ASSERT_TRUE(menu);
    ASSERT_TRUE(menu->activeAction());
    EXPECT_EQ(menu->activeAction()->text(), "Copy reply") << "the first that can be chosen";
    QAccessibleInterface* element = QAccessible::queryAccessibleInterface(menu);
    ASSERT_TRUE(element);
    EXPECT_EQ(element->role(), QAccessible::PopupMenu);
    QStringList names;
    for (int child = 0; child < element->childCount(); ++child)
        names += element->child(child)->text(QAccessible::Name);
    EXPECT_THAT(names, testing::IsSupersetOf({"Deepen", "Copy", "Copy reply", "Select All"}));
    QTest::keyClick(menu, Qt::Key_Down);
    EXPECT_EQ(menu->activeAction()->text(), "Select All");
    menu->close();
    menu = openOn(stage.find("ReplyView"));
    ASSERT_TRUE(menu);
    EXPECT_FALSE(menu->activeAction()) << "the mouse points elsewhere";
}

TEST_F(ContextMenuTest, ItGoesWithThePanel) {
    ASSERT_TRUE(openOn(m_field));
    stage.window->hide();
    EXPECT_FALSE(menu());
}

} // namespace
} // namespace vorq
