#include "doubles/ui/PartTest.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class SettingsRowTest : public PartTest {
  protected:
    void showGroup(int width = 500) {
        show(u"SettingsGroup { objectName: 'group'; width: %1; title: 'Vorq'\n"
             "SettingsRow { objectName: 'leads'; width: parent.width; text: 'Customize'; sub: "
             "'Colors.'; leadsOn: true; onClicked: ++root.presses }\n"
             "SettingsRow { objectName: 'row'; width: parent.width; text: 'Theme of the panel'; "
             "onClicked: root.presses += 100\n"
             "Segmented { objectName: 'choice'; name: 'Theme'; labels: ['Dark', 'Light']; "
             "onChosen: at => index = at } } }"_s.arg(width));
    }
};

TEST_F(SettingsRowTest, OneThatLeadsOnIsPressedAnywhereAndByKeys) {
    showGroup();
    click(part("leads"));
    EXPECT_EQ(presses(), 1);
    key(Qt::Key_Tab);
    EXPECT_TRUE(hasRing(part("leads")));
    for (const Qt::Key each : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        key(each);
    EXPECT_EQ(presses(), 4);
}

TEST_F(SettingsRowTest, InOneThatHoldsControlsTheyAreMet) {
    showGroup();
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    EXPECT_EQ(window.activeFocusItem()->property("text"), "Dark") << "the row itself is no stop";
    click(*saying("Light"));
    EXPECT_EQ(part("choice").property("index"), 1);
    hover(part("row"));
    EXPECT_FALSE(part("row").property("hovered").toBool());
}

TEST_F(SettingsRowTest, IsHeardAsWhatItIs) {
    showGroup();
    EXPECT_EQ(heard(part("group")).role(), QAccessible::Grouping);
    EXPECT_EQ(heard(part("group")).text(QAccessible::Name), "Vorq");
    EXPECT_EQ(heard(part("leads")).role(), QAccessible::Button);
    EXPECT_EQ(heard(part("leads")).text(QAccessible::Name), "Customize");
    EXPECT_EQ(heard(part("leads")).text(QAccessible::Description), "Colors.");
    EXPECT_EQ(heard(part("row")).role(), QAccessible::Grouping);
}

TEST_F(SettingsRowTest, ControlsThatLeaveNoRoomStandBelowTheWords) {
    showGroup();
    EXPECT_NEAR(middle(part("choice")).y(), middle(*saying("Theme of the panel")).y(), 30);
    const double beside = part("row").height();
    part("group").setWidth(220);
    stage.settle(50);
    EXPECT_GT(part("row").height(), beside + 20);
    EXPECT_GE(part("choice").mapToItem(&part("row"), {}).x(), 0);
}

TEST_F(SettingsRowTest, GrowsWithTheText) {
    showGroup();
    const double height = part("leads").height();
    stage.look->setTextScale(2);
    stage.settle(50);
    EXPECT_GT(part("leads").height(), 1.5 * height);
}

} // namespace
} // namespace vorq
