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
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return within(*window.contentItem(), "TipPlate"); }, 3000));
    EXPECT_EQ(within(*window.contentItem(), "TipPlate")->property("words"), "Does one");
    hover(part("off"));
    EXPECT_FALSE(part("one").property("hovered").toBool());
    EXPECT_FALSE(within(*window.contentItem(), "TipPlate"));
}

} // namespace
} // namespace vorq
