#include "doubles/ui/PartTest.h"

#include <QFocusEvent>
#include <QQmlExpression>
#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class SheetTest : public PartTest {
  protected:
    void showSheet(const QString& more = {}) {
        show("TextButton { objectName: 'opener'; text: 'Delete…'; onClicked: sheet.open() }\n"
             "TextButton { objectName: 'below'; y: 60; text: 'Below'; help: 'Is below'; onClicked: "
             "++root.presses }\n"
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

// As a question that brings its window forward.
TEST_F(SheetTest, OpenedBehindOthersItBringsTheKeyboardBackWhereItWas) {
    showSheet();
    key(Qt::Key_Escape);
    stage.settle(50);
    ASSERT_EQ(window.activeFocusItem(), &part("opener"));
    QFocusEvent away(QEvent::FocusOut);
    QCoreApplication::sendEvent(&window, &away);
    ASSERT_NE(window.activeFocusItem(), &part("opener"));
    ASSERT_TRUE(QMetaObject::invokeMethod(&part("opener"), "clicked"));
    stage.settle(50);
    QFocusEvent back(QEvent::FocusIn);
    QCoreApplication::sendEvent(&window, &back);
    stage.settle(400);
    ASSERT_TRUE(isOpen());
    key(Qt::Key_Escape);
    stage.settle(50);
    EXPECT_EQ(window.activeFocusItem(), &part("opener"));
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

class LongSheetTest : public SheetTest {
  protected:
    // Whether all of it is seen between the title and the buttons.
    [[nodiscard]] bool isSeen(QQuickItem& item) {
        const QRectF place = item.mapRectToScene(QRectF(QPointF(), item.size()));
        const QQuickItem& title = *saying("Rename the note?");
        return place.top() >= title.mapToScene({0, title.height()}).y() &&
               place.bottom() <= saying("Rename")->mapToScene({}).y();
    }
    void showLines() { showSheet("Repeater { model: 40; Txt { text: 'line ' + index } }"); }
};

TEST_F(LongSheetTest, WhatTabLeadsToIsSeen) {
    stage.look->setTextScale(2);
    showSheet("Repeater { model: 6; FormField { required property int index; width: parent.width; "
              "label: 'Field ' + index; hint: 'Any.' } }");
    QStringList met;
    for (int i = 0; i < 9; ++i) {
        QQuickItem& holder = *window.activeFocusItem();
        met += heard(holder).text(QAccessible::Name);
        if (holder.inherits("QQuickTextInput")) {
            EXPECT_TRUE(isSeen(holder)) << met.last().toStdString();
            EXPECT_TRUE(isSeen(*saying(met.last()))) << "its label";
        }
        key(Qt::Key_Tab);
    }
    EXPECT_TRUE(met.contains("Field 5")) << met.join(", ").toStdString();
    for (int i = 0; i < 9; ++i) {
        key(Qt::Key_Backtab, Qt::ShiftModifier);
        QQuickItem& holder = *window.activeFocusItem();
        if (holder.inherits("QQuickTextInput")) EXPECT_TRUE(isSeen(holder)) << i << " back";
    }
}

TEST_F(LongSheetTest, KeysScrollIt) {
    showLines();
    ASSERT_TRUE(isSeen(*saying("line 0")));
    ASSERT_FALSE(isSeen(*saying("line 39")));
    const auto top = [this] { return saying("line 0")->mapToScene({}).y(); };
    const double rest = top();
    key(Qt::Key_Down);
    EXPECT_LT(top(), rest);
    key(Qt::Key_Up);
    EXPECT_EQ(top(), rest);
    key(Qt::Key_PageDown);
    EXPECT_LT(top(), rest - 80);
    key(Qt::Key_PageUp);
    EXPECT_EQ(top(), rest);
    key(Qt::Key_End);
    EXPECT_TRUE(isSeen(*saying("line 39")));
    key(Qt::Key_PageDown);
    EXPECT_TRUE(isSeen(*saying("line 39"))) << "there is no more";
    key(Qt::Key_Home);
    EXPECT_EQ(top(), rest);
}

class SheetTipTest : public SheetTest {
  protected:
    [[nodiscard]] QColor colourOfTip() {
        const QQuickItem& plate = *within(*window.contentItem(), "TipPlate");
        const QPointF at = plate.mapToScene({5, plate.height() / 2});
        return window.grabWindow().pixelColor((at * window.effectiveDevicePixelRatio()).toPoint());
    }
};

TEST_F(SheetTipTest, ATipLiesOverTheSheet) {
    showSheet("FormField { width: parent.width; label: 'Password'; isPassword: true }");
    hover(*saying("Show the password"));
    ASSERT_TRUE(tipComes());
    stage.settle(300);
    QQmlExpression fill(QQmlEngine::contextForObject(&part("opener")), nullptr, "Theme.tipFill");
    EXPECT_EQ(colourOfTip(), fill.evaluate().value<QColor>());
}

TEST_F(SheetTipTest, ATipOfThePageBelowGoes) {
    showSheet();
    key(Qt::Key_Escape);
    hover(part("below"));
    ASSERT_TRUE(tipComes());
    key(Qt::Key_Return);
    stage.settle(1000);
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(tip(), "");
}

} // namespace
} // namespace vorq
