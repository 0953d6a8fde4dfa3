#include "doubles/ui/PartTest.h"

#include <QAccessible>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class SegmentedTest : public PartTest {
  protected:
    void showChoice(const QString& more = {}) {
        show("TextButton { objectName: 'before'; text: 'Before' }\n"
             "Segmented { objectName: 'choice'; y: 80; name: 'Shown'\n"
             "labels: ['Open', 'All', 'Done']; onChosen: at => { index = at; root.said += at }\n" +
             more + "}\nTextButton { objectName: 'after'; y: 160; text: 'After' }");
    }
    [[nodiscard]] int index() { return part("choice").property("index").toInt(); }
    [[nodiscard]] QString focused() {
        const QQuickItem* item = window.activeFocusItem();
        return item != nullptr ? item->property("text").toString() : QString();
    }
};

TEST_F(SegmentedTest, APressChooses) {
    showChoice();
    click(*saying("Done"));
    EXPECT_EQ(index(), 2);
    click(*saying("Done"));
    EXPECT_EQ(said(), "2") << "what is chosen already is not chosen again";
}

TEST_F(SegmentedTest, IsOneStopOfTabAndTheArrowsChoose) {
    showChoice();
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    EXPECT_EQ(focused(), "Open");
    key(Qt::Key_Right);
    EXPECT_EQ(index(), 1);
    EXPECT_EQ(focused(), "All");
    key(Qt::Key_End);
    EXPECT_EQ(focused(), "Done");
    key(Qt::Key_Right);
    EXPECT_EQ(index(), 2) << "there is nothing after the last";
    key(Qt::Key_Home);
    EXPECT_EQ(index(), 0);
    key(Qt::Key_Tab);
    EXPECT_EQ(focused(), "After");
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(focused(), "Open");
    EXPECT_TRUE(hasRing(*window.activeFocusItem()));
}

TEST_F(SegmentedTest, FromRightToLeftTheLeftArrowGoesOn) {
    showChoice("LayoutMirroring.enabled: true; LayoutMirroring.childrenInherit: true");
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    EXPECT_GT(middle(*saying("Open")).x(), middle(*saying("Done")).x());
    key(Qt::Key_Left);
    EXPECT_EQ(index(), 1);
}

TEST_F(SegmentedTest, OneThatIsOffIsLeftAsItIs) {
    showChoice("enabled: false");
    click(*saying("Done"));
    EXPECT_EQ(index(), 0);
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    EXPECT_EQ(focused(), "After");
}

TEST_F(SegmentedTest, AScreenReaderHearsWhichOfThemHolds) {
    showChoice();
    EXPECT_EQ(heard(part("choice")).role(), QAccessible::Grouping);
    EXPECT_EQ(heard(part("choice")).text(QAccessible::Name), "Shown");
    const auto segment = [this](const QString& words) -> QAccessibleInterface& {
        return heard(*saying(words));
    };
    EXPECT_EQ(segment("Open").role(), QAccessible::RadioButton);
    EXPECT_TRUE(segment("Open").state().checked);
    EXPECT_FALSE(segment("All").state().checked);
    pressAsScreenReader(*saying("All"));
    EXPECT_TRUE(segment("All").state().checked);
    EXPECT_FALSE(segment("Open").state().checked);
}

TEST_F(SegmentedTest, AScreenReaderThatComesLaterHearsItToo) {
    showChoice();
    QAccessible::setActive(false);
    QAccessible::setActive(true);
    EXPECT_TRUE(heard(*saying("Open")).state().checked);
    EXPECT_FALSE(heard(*saying("All")).state().checked);
}

TEST_F(SegmentedTest, LongLabelsStayWithinIt) {
    showChoice("width: 120");
    EXPECT_LE(saying("Done")->mapToScene({saying("Done")->width(), 0}).x(), 120);
}

TEST_F(SegmentedTest, WhereTheyDoNotFitTheyStandBelowEachOther) {
    showChoice("width: 200");
    const double beside = part("choice").height();
    EXPECT_EQ(middle(*saying("Open")).y(), middle(*saying("Done")).y());
    stage.look->setTextScale(2);
    stage.settle(50);
    EXPECT_GT(middle(*saying("Done")).y(), middle(*saying("Open")).y());
    EXPECT_GT(part("choice").height(), 5 * beside);
    click(*saying("Done"));
    EXPECT_EQ(index(), 2);
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    key(Qt::Key_Up);
    EXPECT_EQ(focused(), "All");
}

TEST_F(SegmentedTest, LabelsThatDoNotFitAreToldByTips) {
    show("Segmented { y: 80; width: 120; name: 'Shown'; labels: ['Everything there is', 'Open'] }");
    hover(*saying("Everything there is"));
    ASSERT_TRUE(tipComes());
    EXPECT_EQ(tip(), "Everything there is");
    hover(*saying("Open"));
    stage.settle(1000);
    EXPECT_EQ(tip(), "") << "this one is seen whole";
}

} // namespace
} // namespace vorq
