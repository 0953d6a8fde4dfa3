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
             "MenuEntry { text: 'Open'; onChosen: root.said += 'open ' }\n"
             "MenuEntry { text: 'Off'; enabled: false; onChosen: root.said += 'off ' }\n"
             "MenuRule {}\n"
             "MenuEntry { text: 'Rename'; status: 'Slow'; onChosen: root.said += 'rename ' }\n"
             "MenuEntry { text: 'Delete'; isDanger: true; onChosen: root.said += 'delete ' } }");
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

TEST_F(MenuTest, OneEntryAloneIsLit) {
    hover(*saying("Open"));
    key(Qt::Key_Down);
    EXPECT_EQ(focused(), "Rename");
    EXPECT_TRUE(saying("Rename")->property("isLit").toBool());
    EXPECT_FALSE(saying("Open")->property("isLit").toBool()) << "the mouse only rests there";
}

TEST_F(MenuTest, OneThatIsOffIsHeardSo) {
    EXPECT_TRUE(heard(*saying("Off")).state().disabled);
    EXPECT_FALSE(heard(*saying("Open")).state().disabled);
}

enum class Way { Mouse, Return, Enter, Space, ScreenReader };

class MenuChoiceTest : public PartTest, public testing::WithParamInterface<Way> {
  protected:
    MenuChoiceTest() {
        show("TextButton { objectName: 'opener'; text: 'More'\n"
             "onClicked: { ++root.presses; menu.popup(root, 100, 100) } }\n"
             "TextField { id: field; objectName: 'field'; y: 60 }\n"
             "Menu { id: menu\n"
             "MenuEntry { text: 'Rename'; onChosen: field.forceActiveFocus() }\n"
             "MenuEntry { text: 'Delete…'; onChosen: sheet.open() } }\n"
             "Sheet { id: sheet; title: 'Delete?'; isDanger: true }");
        key(Qt::Key_Tab);
        key(Qt::Key_Return);
        stage.settle(150);
    }
    void choose(const QString& words) {
        QQuickItem& entry = *saying(words);
        if (GetParam() == Way::Mouse) return click(entry);
        while (!entry.hasActiveFocus())
            key(Qt::Key_Down);
        switch (GetParam()) {
        case Way::Return:
            return key(Qt::Key_Return);
        case Way::Enter:
            return key(Qt::Key_Enter);
        case Way::Space:
            return key(Qt::Key_Space);
        default:
            return pressAsScreenReader(entry);
        }
    }
};

TEST_P(MenuChoiceTest, MayTakeTheKeyboardElsewhere) {
    choose("Rename");
    EXPECT_FALSE(saying("Rename"));
    EXPECT_EQ(window.activeFocusItem(), &part("field"));
    type("a");
    EXPECT_EQ(part("field").property("text"), "a");
}

TEST_P(MenuChoiceTest, MayOpenASheetThatGivesTheKeyboardBack) {
    choose("Delete…");
    EXPECT_FALSE(part("opener").hasActiveFocus()) << "the sheet has the keyboard at once";
    key(Qt::Key_Space);
    EXPECT_EQ(presses(), 1) << "nothing is pressed below it";
    stage.settle(400);
    if (saying("Cancel")) key(Qt::Key_Escape);
    EXPECT_EQ(window.activeFocusItem(), &part("opener"));
}

INSTANTIATE_TEST_SUITE_P(Ways, MenuChoiceTest,
                         testing::Values(Way::Mouse, Way::Return, Way::Enter, Way::Space,
                                         Way::ScreenReader));

class MenuWordsTest : public PartTest {};

TEST_F(MenuWordsTest, WhatIsChosenAgainStaysMarked) {
    show(
        "TextButton { objectName: 'opener'; text: 'More'; onClicked: menu.popup(root, 100, 100) }\n"
        "Menu { id: menu; hasMarks: true; MenuEntry { text: 'Auto'; isMarked: true }\n"
        "MenuEntry { text: 'Quick' } }");
    click(part("opener"));
    stage.settle(150);
    click(*saying("Auto"));
    click(part("opener"));
    stage.settle(150);
    EXPECT_TRUE(heard(*saying("Auto")).state().checked);
    EXPECT_FALSE(heard(*saying("Quick")).state().checked);
}

TEST_F(MenuWordsTest, WhatDoesNotFitIsToldByATip) {
    show("TextButton { text: 'More'; onClicked: menu.open() }\n"
         "Menu { id: menu; width: 200; MenuEntry { text: 'Short' }\n"
         "MenuEntry { text: 'More words than the menu is wide, by far' } }");
    key(Qt::Key_Tab);
    key(Qt::Key_Return);
    key(Qt::Key_End);
    ASSERT_TRUE(tipComes());
    EXPECT_EQ(tip(), "More words than the menu is wide, by far");
    hover(*saying("Short"));
    stage.settle(1000);
    EXPECT_EQ(tip(), "");
}

} // namespace
} // namespace vorq
