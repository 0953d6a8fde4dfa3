#include "doubles/ui/PartTest.h"

#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class MenuTest : public PartTest {
  protected:
    MenuTest() {
        show("TextButton { objectName: 'opener'; text: 'More'; onClicked: menu.popup(root, 100, "
             "100) }\n"
             "Menu { id: menu; name: 'Task'\n"
             "MenuEntry { text: 'Open'; onTriggered: root.said += 'open ' }\n"
             "MenuEntry { text: 'Off'; enabled: false; onTriggered: root.said += 'off ' }\n"
             "MenuRule {}\n"
             "MenuEntry { text: 'Rename'; status: 'Slow'; onTriggered: root.said += 'rename ' }\n"
             "MenuEntry { text: 'Delete'; isDanger: true; onTriggered: root.said += 'delete ' } }");
        key(Qt::Key_Tab);
        key(Qt::Key_Return);
        stage.settle(150);
    }
    [[nodiscard]] bool isOpen() { return saying("Rename") != nullptr; }
    [[nodiscard]] QString focused() {
        return window.activeFocusItem()->property("text").toString();
    }
};

TEST_F(MenuTest, APressChoosesAndCloses) {
    ASSERT_TRUE(isOpen());
    click(*saying("Rename"));
    stage.settle(50);
    EXPECT_EQ(said(), "rename ");
    EXPECT_FALSE(isOpen());
}

TEST_F(MenuTest, KeysLeadThroughItPastWhatIsOff) {
    key(Qt::Key_Down);
    EXPECT_EQ(focused(), "Open");
    key(Qt::Key_Down);
    EXPECT_EQ(focused(), "Rename");
    key(Qt::Key_End);
    EXPECT_EQ(focused(), "Delete");
    key(Qt::Key_Down);
    EXPECT_EQ(focused(), "Open") << "round the end";
    key(Qt::Key_Up);
    EXPECT_EQ(focused(), "Delete");
    key(Qt::Key_Home);
    EXPECT_EQ(focused(), "Open");
    key(Qt::Key_R);
    EXPECT_EQ(focused(), "Rename") << "by its first letter";
}

TEST_F(MenuTest, ReturnEnterAndSpaceChoose) {
    for (const Qt::Key each : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        key(Qt::Key_End);
        key(each);
        stage.settle(50);
        EXPECT_FALSE(isOpen());
        click(part("opener"));
        stage.settle(150);
    }
    EXPECT_EQ(said(), "delete delete delete ");
}

TEST_F(MenuTest, EscapeAndAPressBesideItCloseIt) {
    key(Qt::Key_Escape);
    stage.settle(50);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(window.activeFocusItem(), &part("opener"));
    click(part("opener"));
    stage.settle(150);
    ASSERT_TRUE(isOpen());
    QTest::mouseClick(&window, Qt::LeftButton, {}, {590, 390});
    stage.settle(50);
    EXPECT_FALSE(isOpen());
    EXPECT_EQ(said(), "");
}

TEST_F(MenuTest, WhatIsOffIsNotChosen) {
    click(*saying("Off"));
    EXPECT_EQ(said(), "");
}

TEST_F(MenuTest, AHoverLightsItsEntry) {
    hover(*saying("Rename"));
    EXPECT_TRUE(saying("Rename")->property("isLit").toBool());
    EXPECT_FALSE(saying("Open")->property("isLit").toBool());
}

TEST_F(MenuTest, IsHeardAsAMenu) {
    EXPECT_EQ(heard(*saying("Rename")).role(), QAccessible::MenuItem);
    EXPECT_EQ(heard(*saying("Rename")).text(QAccessible::Name), "Rename, Slow");
    QAccessibleInterface* above = heard(*saying("Rename")).parent();
    while (above != nullptr && above->role() != QAccessible::PopupMenu)
        above = above->parent();
    ASSERT_TRUE(above);
    EXPECT_EQ(above->text(QAccessible::Name), "Task");
    pressAsScreenReader(*saying("Rename"));
    EXPECT_EQ(said(), "rename ");
}

} // namespace
} // namespace vorq
