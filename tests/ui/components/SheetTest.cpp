#include "doubles/ui/PartTest.h"

#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class SheetTest : public PartTest {
  protected:
    void showSheet(const QString& more = {}) {
        show("TextButton { objectName: 'opener'; text: 'Delete…'; onClicked: sheet.open() }\n"
             "TextButton { objectName: 'below'; y: 60; text: 'Below'; onClicked: ++root.presses }\n"
             "Sheet { id: sheet; title: 'Rename the note?'; text: 'Its links go on.'\n"
             "acceptText: 'Rename'; onAccepted: root.said += 'yes'; onRejected: root.said += "
             "'no'\n" +
             more + "}");
        key(Qt::Key_Tab);
        key(Qt::Key_Return);
        stage.settle(400);
    }
    [[nodiscard]] bool isOpen() { return saying("Rename the note?") != nullptr; }
    [[nodiscard]] QString focused() {
        return window.activeFocusItem()->property("text").toString();
    }
};

TEST_F(SheetTest, ItsButtonsAreItsAnswers) {
    showSheet();
    ASSERT_TRUE(isOpen());
    click(*saying("Rename"));
    EXPECT_EQ(said(), "yes");
    stage.settle(50);
    EXPECT_FALSE(isOpen());
    click(part("opener"));
    stage.settle(400);
    click(*saying("Cancel"));
    EXPECT_EQ(said(), "yesno");
}

TEST_F(SheetTest, ReturnAcceptsAndEscapeRejects) {
    showSheet();
    key(Qt::Key_Return);
    EXPECT_EQ(said(), "yes");
    stage.settle(50);
    EXPECT_EQ(window.activeFocusItem(), &part("opener")) << "the keyboard goes back";
    key(Qt::Key_Return);
    stage.settle(400);
    key(Qt::Key_Escape);
    EXPECT_EQ(said(), "yesno");
}

TEST_F(SheetTest, WhatCannotBeUndoneIsNotDoneByReturn) {
    showSheet("isDanger: true");
    EXPECT_EQ(focused(), "Cancel");
    key(Qt::Key_Return);
    EXPECT_EQ(said(), "no");
}

TEST_F(SheetTest, TabStaysWithinIt) {
    showSheet("FormField { label: 'Name' }");
    QStringList met;
    for (int i = 0; i < 4; ++i) {
        met += heard(*window.activeFocusItem()).text(QAccessible::Name);
        key(Qt::Key_Tab);
    }
    EXPECT_EQ(met.count("Below"), 0);
    EXPECT_EQ(met.first(), "Name") << "a form begins at its first field";
    EXPECT_TRUE(met.contains("Rename") && met.contains("Cancel")) << met.join(", ").toStdString();
}

TEST_F(SheetTest, ThePageBelowGetsNoPress) {
    showSheet();
    QTest::mouseClick(&window, Qt::LeftButton, {}, middle(part("below")));
    stage.settle(50);
    EXPECT_EQ(presses(), 0);
    EXPECT_EQ(said(), "no") << "a press beside it rejects";
}

TEST_F(SheetTest, APressOnItselfLeavesItOpen) {
    showSheet();
    click(*saying("Its links go on."));
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(said(), "");
}

TEST_F(SheetTest, CannotBeAcceptedWhileItIsNotFilledIn) {
    showSheet("canAccept: false");
    click(*saying("Rename"));
    key(Qt::Key_Return);
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(said(), "");
}

TEST_F(SheetTest, IsHeardAsADialog) {
    showSheet();
    QAccessibleInterface* above = heard(*saying("Rename")).parent();
    while (above != nullptr && above->role() != QAccessible::Dialog)
        above = above->parent();
    ASSERT_TRUE(above);
    EXPECT_EQ(above->text(QAccessible::Name), "Rename the note?");
}

TEST_F(SheetTest, LongTextScrollsWithinTheWindow) {
    showSheet("Repeater { model: 30; Txt { text: 'line ' + index } }");
    const QQuickItem* button = saying("Rename");
    ASSERT_TRUE(button);
    EXPECT_LT(button->mapToScene({0, button->height()}).y(), 400);
    EXPECT_GT(saying("Rename the note?")->mapToScene({}).y(), 0);
}

} // namespace
} // namespace vorq
