#include "doubles/ui/HexRowFixture.h"
#include "ui/native/HexColors.h"

#include <QApplication>
#include <QSignalSpy>
#include <QWidget>

#include <gmock/gmock.h>

#include <algorithm>

namespace vorq {
namespace {

TEST_F(HexRowTest, ReturnStoresTheNormalisedColour) {
    enter(" f97316 ");
    EXPECT_EQ(value(), "#F97316");
    EXPECT_EQ(field->property("text"), "#F97316");
}

TEST_F(HexRowTest, ADraftThatIsNoColourLeavesTheValue) {
    enter("#12");
    EXPECT_TRUE(bad());
    EXPECT_EQ(value(), "#112233");
    enter("#445566");
    EXPECT_FALSE(bad());
    EXPECT_EQ(value(), "#445566");
}

TEST_F(HexRowTest, AnEmptyDraftClears) {
    enter("");
    EXPECT_EQ(value(), "");
    EXPECT_FALSE(bad());
}

TEST_F(HexRowTest, SaysWhatAValidColourLooksLike) {
    const auto says = [this] {
        for (QQuickItem* item : row->findChildren<QQuickItem*>())
            if (item->isVisible() && item->property("text") == "Enter a valid hex like #F97316")
                return true;
        return false;
    };
    EXPECT_FALSE(says());
    enter("#12");
    EXPECT_TRUE(says());
    enter("#445566");
    EXPECT_FALSE(says());
}

TEST_F(HexRowTest, ClearIsThereAsLongAsAValueIs) {
    QQuickItem* clear = nullptr;
    for (QQuickItem* item : row->findChildren<QQuickItem*>())
        if (item->property("text") == "Clear" && item->inherits("QQuickAbstractButton"))
            clear = item;
    ASSERT_TRUE(clear);
    EXPECT_TRUE(clear->isVisible());
    QMetaObject::invokeMethod(clear, "clicked");
    EXPECT_EQ(value(), "");
    EXPECT_FALSE(clear->isVisible());
    enter("#445566");
    EXPECT_TRUE(clear->isVisible());
}

TEST_F(HexRowTest, ClearHandsTheKeyboardToTheField) {
    field->forceActiveFocus();
    QTest::keyClick(&window, Qt::Key_Tab);
    ASSERT_EQ(window.activeFocusItem()->property("text"), "Clear");
    QTest::keyClick(&window, Qt::Key_Space);
    EXPECT_EQ(value(), "");
    EXPECT_EQ(window.activeFocusItem(), field);
}

// The choice of colours, once it is open; null if it does not open.
QWidget* choiceOfColours() {
    const auto find = [] {
        const QWidgetList all = QApplication::topLevelWidgets();
        const auto found = std::ranges::find_if(all, [](const QWidget* widget) {
            return widget->isVisible() && widget->inherits("QColorDialog");
        });
        return found == all.end() ? nullptr : *found;
    };
    return QTest::qWaitFor([&] { return find() != nullptr; }, 3000) ? find() : nullptr;
}

TEST_F(HexRowTest, EnterOnTheKeypadOpensTheChoiceOfColours) {
    QQuickItem* well = field->nextItemInFocusChain(false);
    well->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(&window, Qt::Key_Enter);
    EXPECT_TRUE(choiceOfColours());
}

TEST_F(HexRowTest, AChoiceOfColoursThatIsCancelledLeavesNoErrorBesideTheValue) {
    enter("#12");
    ASSERT_TRUE(bad());
    field->nextItemInFocusChain(false)->forceActiveFocus(Qt::BacktabFocusReason);
    QTest::keyClick(&window, Qt::Key_Space);
    QWidget* choice = choiceOfColours();
    ASSERT_TRUE(choice);
    QTest::keyClick(choice, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !bad(); }, 3000));
    EXPECT_EQ(field->property("text"), "#112233");
    EXPECT_EQ(value(), "#112233");
}

TEST_F(HexRowTest, LosingFocusCommits) {
    field->forceActiveFocus();
    field->setProperty("text", "#ABCDEF");
    m_holder->forceActiveFocus();
    EXPECT_EQ(value(), "#ABCDEF");
}

// What is seen of the row's words and controls, in the row.
class HexRowLooksTest : public HexRowTest {
  protected:
    QQuickItem& text(const QString& words) {
        for (QQuickItem* item : row->findChildren<QQuickItem*>())
            if (item->isVisible() && item->inherits("QQuickText") &&
                item->property("text") == words)
                return *item;
        qFatal("no text says %s", qPrintable(words));
    }
    [[nodiscard]] QRectF place(const QQuickItem& item) const {
        return item.mapRectToItem(row, QRectF(QPointF(), item.size()));
    }
    void expectInOrder() {
        stage.settle(50);
        const QList<QRectF> places{place(text("Chat")), place(*field), place(text("Clear"))};
        for (const QRectF& one : places) {
            EXPECT_GE(one.left(), 0);
            EXPECT_LE(one.right(), row->width());
            for (const QRectF& other : places)
                EXPECT_TRUE(&one == &other || !one.intersects(other));
        }
        EXPECT_GE(field->width() - field->property("leftPadding").toDouble() -
                      field->property("rightPadding").toDouble(),
                  field->property("contentWidth").toDouble())
            << "the colour is seen whole";
    }
};

TEST_F(HexRowLooksTest, FromRightToLeftTheWordsStandAtTheRight) {
    m_holder->setProperty("mirrored", true);
    expectInOrder();
    EXPECT_GT(place(text("Chat")).center().x(), place(*field).center().x());
}

TEST_F(HexRowLooksTest, LargeTextHasItsRoom) {
    stage.look->setTextScale(2);
    expectInOrder();
    for (const double width : {360, 480, 600}) {
        row->setWidth(width);
        enter("#F97316");
        expectInOrder();
    }
}

TEST_F(HexRowLooksTest, WhatIsWrongIsSaidWithinTheRow) {
    enter("#12");
    row->setWidth(300);
    stage.settle(50);
    const QRectF problem = place(text("Enter a valid hex like #F97316"));
    EXPECT_TRUE(QRectF(QPointF(), row->size()).contains(problem));
    EXPECT_GT(problem.top(), place(*field).bottom());
}

TEST(HexColors, LowContrastIsTold) {
    EXPECT_TRUE(HexColors::isLowContrast("#F97316"));
    EXPECT_FALSE(HexColors::isLowContrast("#111111"));
    EXPECT_FALSE(HexColors::isLowContrast("nonsense"));
}

TEST(HexColors, ColoursOfTheToolkitBecomeHex) {
    EXPECT_EQ(HexColors::hexOf(QColor(0x12, 0x34, 0x56)), "#123456");
    EXPECT_EQ(HexColors::hexOf(QColor::fromCmyk(0, 0, 0, 0)), "#FFFFFF");
    EXPECT_EQ(HexColors::hexOf(QColor()), "#808080");
}

} // namespace
} // namespace vorq
