#include "doubles/ui/PartTest.h"

#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class ToastTest : public PartTest {
  protected:
    ToastTest() {
        show("TextField { objectName: 'before' }\n"
             "Toast { objectName: 'toast'; y: 300; shownTime: 400; onUndone: ++root.presses }");
        say("Moved to Study");
        stage.settle(300);
    }
    void say(const QString& words) {
        QMetaObject::invokeMethod(&part("toast"), "show", Q_ARG(QString, words));
    }
    // However slow the machine is.
    void sayForLong() {
        part("toast").setProperty("shownTime", 60000);
        say("Moved to Study");
    }
    [[nodiscard]] bool isShown() { return part("toast").isVisible(); }
};

TEST_F(ToastTest, GoesByItself) {
    EXPECT_TRUE(isShown());
    stage.settle(700);
    EXPECT_FALSE(isShown());
}

TEST_F(ToastTest, StaysWhileTheMouseIsOnIt) {
    hover(part("toast"));
    stage.settle(900);
    EXPECT_TRUE(isShown());
    QTest::mouseMove(&window, {10, 200});
    stage.settle(900);
    EXPECT_FALSE(isShown());
}

TEST_F(ToastTest, APressUndoesOnceAndTakesItAway) {
    sayForLong();
    click(*saying("Undo"));
    stage.settle(300);
    EXPECT_EQ(presses(), 1);
    EXPECT_FALSE(isShown());
}

TEST_F(ToastTest, ByTheKeyboardItIsUndoneAndStaysMeanwhile) {
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    EXPECT_EQ(window.activeFocusItem()->property("text"), "Undo");
    stage.settle(900);
    EXPECT_TRUE(isShown());
    key(Qt::Key_Return);
    EXPECT_EQ(presses(), 1);
}

TEST_F(ToastTest, EscapeTakesItAway) {
    sayForLong();
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    key(Qt::Key_Escape);
    stage.settle(300);
    EXPECT_FALSE(isShown());
    EXPECT_EQ(presses(), 0);
}

TEST_F(ToastTest, AfterUndoByTheKeyboardTypingGoesOn) {
    sayForLong();
    key(Qt::Key_Tab);
    type("ab");
    key(Qt::Key_Tab);
    key(Qt::Key_Return);
    EXPECT_EQ(presses(), 1);
    type("c");
    EXPECT_EQ(part("before").property("text"), "abc");
}

TEST_F(ToastTest, AfterEscapeTypingGoesOn) {
    sayForLong();
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    EXPECT_EQ(window.activeFocusItem()->property("text"), "Undo");
    key(Qt::Key_Escape);
    type("c");
    EXPECT_EQ(part("before").property("text"), "c");
}

TEST_F(ToastTest, WhenItGoesByItselfTheKeyboardStaysWhereItIs) {
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !isShown(); }, 3000));
    type("c");
    EXPECT_EQ(part("before").property("text"), "c");
}

TEST_F(ToastTest, HasTheNameOfWhatItSays) {
    EXPECT_EQ(heard(part("toast")).role(), QAccessible::Grouping);
    EXPECT_EQ(heard(part("toast")).text(QAccessible::Name), "Moved to Study");
}

class EmptyStateTest : public PartTest {};

TEST_F(EmptyStateTest, SaysWhyAndOffersWhatToDo) {
    show("EmptyState { objectName: 'empty'; width: 300; title: 'No notes yet'; sub: 'Begin one.'\n"
         "action: 'New note'; onActed: ++root.presses }");
    EXPECT_EQ(heard(part("empty")).role(), QAccessible::Grouping);
    EXPECT_EQ(heard(part("empty")).text(QAccessible::Name), "No notes yet");
    click(*saying("New note"));
    key(Qt::Key_Tab);
    key(Qt::Key_Return);
    EXPECT_EQ(presses(), 2);
}

TEST_F(EmptyStateTest, WithNothingToDoThereIsNoStop) {
    show("EmptyState { objectName: 'empty'; width: 300; title: 'No notes yet' }\n"
         "TextButton { y: 300; text: 'Other' }");
    key(Qt::Key_Tab);
    EXPECT_EQ(window.activeFocusItem()->property("text"), "Other");
}

class BadgeTest : public PartTest {};

TEST_F(BadgeTest, IsHeardAndKeepsWithinItsWidth) {
    show("Badge { objectName: 'badge'; text: 'A state of very many words in a row'; widest: 90; "
         "look: Badge.Warn }");
    EXPECT_EQ(heard(part("badge")).role(), QAccessible::StaticText);
    EXPECT_EQ(heard(part("badge")).text(QAccessible::Name), "A state of very many words in a row");
    EXPECT_EQ(part("badge").width(), 90);
}

TEST_F(BadgeTest, WordsThatDoNotFitAreToldByATip) {
    show("Badge { objectName: 'badge'; y: 80; text: 'A state of very many words'; widest: 90 }");
    hover(part("badge"));
    ASSERT_TRUE(tipComes());
    EXPECT_EQ(tip(), "A state of very many words");
}

} // namespace
} // namespace vorq
