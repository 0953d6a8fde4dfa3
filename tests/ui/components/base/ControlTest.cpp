#include "doubles/ui/PartTest.h"

#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class ControlTest : public PartTest {
  protected:
    void showButtons() {
        show("Row { spacing: 40\n"
             "TextButton { objectName: 'one'; text: 'One'; help: 'Does one'; onClicked: "
             "++root.presses }\n"
             "TextButton { objectName: 'off'; text: 'Off'; enabled: false; onClicked: "
             "++root.presses }\n"
             "IconButton { objectName: 'two'; text: 'Two'; iconName: 'plus'; onClicked: "
             "root.presses += 10 } }");
    }
};

TEST_F(ControlTest, TheMouseAndEachKeyPressIt) {
    showButtons();
    click(part("one"));
    EXPECT_EQ(presses(), 1);
    key(Qt::Key_Tab);
    for (const Qt::Key each : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        key(each);
    EXPECT_EQ(presses(), 4);
}

TEST_F(ControlTest, AKeyThatIsHeldPressesOnce) {
    showButtons();
    key(Qt::Key_Tab);
    key(Qt::Key_Return);
    repeatKey(Qt::Key_Return);
    repeatKey(Qt::Key_Enter);
    EXPECT_EQ(presses(), 1);
}

TEST_F(ControlTest, TabGoesFromOneToTheNextPastWhatIsOff) {
    showButtons();
    key(Qt::Key_Tab);
    EXPECT_EQ(window.activeFocusItem(), &part("one"));
    EXPECT_TRUE(hasRing(part("one")));
    key(Qt::Key_Tab);
    EXPECT_EQ(window.activeFocusItem(), &part("two"));
    EXPECT_FALSE(hasRing(part("one")));
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(window.activeFocusItem(), &part("one"));
}

TEST_F(ControlTest, TheMouseLeavesTheKeyboardWhereItIs) {
    showButtons();
    key(Qt::Key_Tab);
    click(part("two"));
    EXPECT_EQ(presses(), 10);
    EXPECT_EQ(window.activeFocusItem(), &part("one"));
}

TEST_F(ControlTest, OneThatIsOffIsPressedByNothing) {
    showButtons();
    click(part("off"));
    part("off").forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Return);
    key(Qt::Key_Space);
    EXPECT_EQ(presses(), 0);
    pressAsScreenReader(part("off"));
    EXPECT_EQ(presses(), 0) << "by a screen reader";
    EXPECT_TRUE(heard(part("off")).state().disabled);
    EXPECT_FALSE(heard(part("one")).state().disabled);
}

TEST_F(ControlTest, WordsThatDoNotFitAreToldByATip) {
    show("TextButton { objectName: 'short'; width: 80; text: 'More words than fit' }\n"
         "TextButton { objectName: 'helped'; y: 80; width: 80; text: 'Other words than fit'; help: "
         "'Does it' }");
    hover(part("short"));
    ASSERT_TRUE(tipComes());
    EXPECT_EQ(tip(), "More words than fit");
    hover(part("helped"));
    ASSERT_TRUE(tipComes());
    EXPECT_EQ(tip(), "Other words than fit\nDoes it");
}

TEST_F(ControlTest, AScreenReaderHearsAndPressesIt) {
    showButtons();
    QAccessibleInterface& one = heard(part("one"));
    EXPECT_EQ(one.role(), QAccessible::Button);
    EXPECT_EQ(one.text(QAccessible::Name), "One");
    EXPECT_EQ(one.text(QAccessible::Description), "Does one");
    EXPECT_TRUE(one.state().focusable);
    pressAsScreenReader(part("one"));
    EXPECT_EQ(presses(), 1);
}

TEST_F(ControlTest, AHoverIsShownAndThenTold) {
    showButtons();
    hover(part("one"));
    EXPECT_TRUE(part("one").property("hovered").toBool());
    EXPECT_TRUE(tipComes());
    EXPECT_EQ(tip(), "Does one");
    hover(part("off"));
    EXPECT_FALSE(part("one").property("hovered").toBool());
    EXPECT_EQ(tip(), "");
}

} // namespace
} // namespace vorq
