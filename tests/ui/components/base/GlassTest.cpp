#include "areas/AppearanceSettings.h"
#include "doubles/ui/PanelStage.h"

#include <QImage>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class GlassTest : public testing::Test {
  protected:
    [[nodiscard]] QImage picture() {
        stage.settle(100);
        return stage.window->grabWindow();
    }

    PanelStage stage;
};

TEST_F(GlassTest, TranslucentItLeavesItsCornersOpen) {
    stage.look->setTier(PanelLook::Tier::NoBlur);
    stage.show();
    const QImage shown = picture();
    EXPECT_EQ(shown.pixelColor(0, 0).lightness(), 0) << "nothing is painted there";
    EXPECT_GT(shown.pixelColor(220, 400).lightness(), 0);
}

TEST_F(GlassTest, OpaqueItIsPaintedToTheEdgeInItsOwnColour) {
    stage.state->appearance().setPanelAppearance(PanelAppearance::White);
    stage.look->setTier(PanelLook::Tier::Opaque);
    stage.show();
    const QImage shown = picture();
    for (int x = 0; x < shown.width(); ++x)
        for (const int y : {0, 1, 10, shown.height() - 2, shown.height() - 1}) {
            ASSERT_EQ(shown.pixelColor(x, y).alpha(), 255) << x << ", " << y;
            ASSERT_GT(shown.pixelColor(x, y).lightness(), 170) << x << ", " << y;
        }
}

TEST_F(GlassTest, ColoursOfItsOwnApplyAtOnce) {
    stage.look->setTier(PanelLook::Tier::Opaque);
    stage.show();
    const QColor before = picture().pixelColor(220, 400);
    EXPECT_LT(before.lightness(), 60);
    stage.state->appearance().setPanelBackgroundHex("#FFF4D6");
    const QColor after = picture().pixelColor(220, 400);
    EXPECT_GT(after.lightness(), 170);
    stage.state->appearance().resetCustomPanelColors();
    EXPECT_EQ(picture().pixelColor(220, 400), before);
}

} // namespace
} // namespace vorq
