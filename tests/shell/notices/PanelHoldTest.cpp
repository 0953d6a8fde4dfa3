#include "shell/notices/PanelHold.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>
#include <vector>

namespace vorq {
namespace {

using enum PanelHoldKind;

TEST(PanelHold, HoldsAsLongAsItLives) {
    PanelHolds holds;
    EXPECT_FALSE(holds.isHeld());
    {
        const PanelHold hold = holds.take(Menu);
        EXPECT_TRUE(holds.isHeld());
        EXPECT_TRUE(hold);
    }
    EXPECT_FALSE(holds.isHeld());
}

TEST(PanelHold, EachHoldCounts) {
    PanelHolds holds;
    PanelHold first = holds.take(Menu);
    PanelHold second = holds.take(Menu);
    first.giveBack();
    first.giveBack();
    EXPECT_FALSE(first);
    EXPECT_TRUE(holds.isHeld());
    second.giveBack();
    EXPECT_FALSE(holds.isHeld());
}

TEST(PanelHold, KindsAreToldApart) {
    PanelHolds holds;
    const PanelHold menu = holds.take(Menu);
    EXPECT_TRUE(holds.isHeld(Menu));
    EXPECT_FALSE(holds.isHeld(Dialog));
    const PanelHold dialog = holds.take(Dialog);
    EXPECT_TRUE(holds.isHeld(Dialog));
}

TEST(PanelHold, MovesWithoutBeingGivenBack) {
    PanelHolds holds;
    std::vector<PanelHold> kept;
    kept.push_back(holds.take(Dialog));
    PanelHold other = std::move(kept.front());
    kept.clear();
    EXPECT_TRUE(holds.isHeld());
    other = holds.take(Menu);
    EXPECT_FALSE(holds.isHeld(Dialog)) << "what it held before is given back";
    other = PanelHold();
    EXPECT_FALSE(holds.isHeld());
}

TEST(PanelHold, MayOutliveTheCount) {
    std::optional<PanelHolds> holds(std::in_place);
    PanelHold hold = holds->take(Menu);
    holds.reset();
    hold.giveBack();
    EXPECT_FALSE(hold);
}

} // namespace
} // namespace vorq
