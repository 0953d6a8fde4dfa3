#include "doubles/ui/PanelStage.h"

#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

constexpr int longEnough = 1200; // milliseconds

class TipTest : public testing::Test {
  protected:
    TipTest() {
        stage.answer("A reply.");
        stage.show();
        hover({220, 300}); // the pointer rests where the test before left it
        stage.settle(300);
    }
    // What is said, "" for nothing.
    [[nodiscard]] QString words() {
        const QQuickItem* plate = this->plate();
        return plate ? plate->property("words").toString() : QString();
    }
    [[nodiscard]] QQuickItem* plate() {
        for (QQuickItem* item : stage.window->contentItem()->childItems())
            if (QString::fromLatin1(item->metaObject()->className()).startsWith("TipPlate") &&
                item->isVisible())
                return item;
        return nullptr;
    }
    [[nodiscard]] QPoint placeOf(const QString& name) {
        for (const QQuickItem* item : stage.findAll("IconButton"))
            if (item->property("text").toString() == name)
                return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
        return {};
    }
    void hover(QPoint at) { QTest::mouseMove(stage.window.get(), at); }
    [[nodiscard]] bool comes(const QString& expected) {
        return QTest::qWaitFor([&] { return words() == expected; }, 3000);
    }
    void expectWithinThePanel() {
        ASSERT_TRUE(plate());
        const QRectF at = plate()->mapRectToScene(QRectF(QPointF(), plate()->size()));
        EXPECT_TRUE(QRectF(0, 0, 440, 750).contains(at)) << at.left() << ", " << at.right();
    }

    PanelStage stage;
};

TEST_F(TipTest, ComesWhereTheMouseRestsAndGoesWithIt) {
    hover(placeOf("Add files or notes"));
    stage.settle(100);
    EXPECT_EQ(words(), "") << "not at once";
    EXPECT_TRUE(comes("Add files or notes"));
    expectWithinThePanel();
    hover({220, 300});
    stage.settle(20);
    EXPECT_EQ(words(), "");
}

TEST_F(TipTest, SaysTheHelpWhereThereIsOne) {
    const QPoint attach = placeOf("Add files or notes");
    QTest::mouseClick(stage.window.get(), Qt::LeftButton, {}, attach);
    hover({220, 200});
    hover(attach);
    EXPECT_TRUE(comes("Close attachment options"));
    expectWithinThePanel();
}

TEST_F(TipTest, AtTheRightEdgeItStaysWithinThePanel) {
    stage.panel->setPrompt("a draft");
    hover(placeOf("Send"));
    EXPECT_TRUE(comes("Send"));
    expectWithinThePanel();
}

TEST_F(TipTest, ComesOnKeyboardFocusToo) {
    QTest::keyClick(stage.window.get(), Qt::Key_Tab);
    EXPECT_TRUE(comes("Add files or notes"));
    QTest::keyClick(stage.window.get(), Qt::Key_Backtab, Qt::ShiftModifier);
    stage.settle(20);
    EXPECT_EQ(words(), "");
}

TEST_F(TipTest, APressTakesItAwayForGood) {
    const QPoint attach = placeOf("Add files or notes");
    hover(attach);
    EXPECT_TRUE(comes("Add files or notes"));
    QTest::mouseClick(stage.window.get(), Qt::LeftButton, {}, attach);
    stage.settle(longEnough);
    EXPECT_EQ(words(), "");
}

TEST_F(TipTest, OfARowOfTheTraySaysItsHelp) {
    stage.panel->tray()->setShown(true);
    stage.settle(400);
    const QQuickItem* row = stage.findAll("TrayRow").value(1);
    hover(row->mapToScene({100, 20}).toPoint());
    const QString help = row->property("help").toString();
    EXPECT_TRUE(help.startsWith("Add study files — "));
    EXPECT_TRUE(comes(help));
    expectWithinThePanel();
}

} // namespace
} // namespace vorq
