#include "shell/look/PanelLook.h"
#include "areas/AppearanceSettings.h"
#include "platform/testing/ScriptedDefaults.h"
#include "shell/look/Contrast.h"
#include "shell/look/TextScale.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

class PanelLookTest : public testing::Test {
  protected:
    ScriptedDefaults defaults;
    AppearanceSettings settings{defaults};
    PanelLook look{settings};
};

TEST_F(PanelLookTest, ThePanelsThemeIsItsOwn) {
    settings.setAppAppearance(AppAppearancePreference::Light);
    EXPECT_TRUE(look.panelIsDark());
    settings.setPanelAppearance(PanelAppearance::White);
    settings.setAppAppearance(AppAppearancePreference::Dark);
    EXPECT_FALSE(look.panelIsDark());
}

TEST_F(PanelLookTest, ABackgroundOfItsOwnDecidesWhatIsDrawnOnIt) {
    settings.setPanelAppearance(PanelAppearance::White);
    settings.setPanelBackgroundHex("#0F4C47");
    EXPECT_TRUE(look.panelIsDark()) << "dark text could not be read on it";
    settings.setPanelAppearance(PanelAppearance::Current);
    settings.setPanelBackgroundHex("#FFF4D6");
    EXPECT_FALSE(look.panelIsDark());
    settings.setPanelBackgroundHex("no colour");
    EXPECT_TRUE(look.panelIsDark());
    settings.setPanelBackgroundHex("");
    EXPECT_TRUE(look.panelIsDark());
}

TEST_F(PanelLookTest, OnMiddlingBackgroundsTheInkIsTheOneThatCanBeRead) {
    for (const char* hex : {"#808080", "#F97316", "#6A6A6A", "#767676", "#00A0A0", "#B03060"}) {
        for (const PanelAppearance theme : {PanelAppearance::Current, PanelAppearance::White}) {
            settings.setPanelAppearance(theme);
            settings.setPanelBackgroundHex(hex);
            const QColor ink = look.panelIsDark() ? QColor("#F3F4F8") : QColor("#14161D");
            EXPECT_GE(Contrast::ratio(ink, look.ground()), Contrast::readableText) << hex;
        }
    }
}

TEST_F(PanelLookTest, AFaintBackgroundLeavesTheThemeAsItIs) {
    settings.setPanelBackgroundHex("#FFFFFF18");
    EXPECT_TRUE(look.panelIsDark());
    EXPECT_LT(look.ground().lightness(), 80);
    settings.setPanelAppearance(PanelAppearance::White);
    settings.setPanelBackgroundHex("#00000018");
    EXPECT_FALSE(look.panelIsDark());
}

TEST_F(PanelLookTest, OnAFaintBlockTheInkIsThatOfItsGround) {
    settings.setPanelAssistantBlockHex("#FFFFFF20");
    EXPECT_NEAR(look.assistantInk().redF(), 0.95, 0.01);
    settings.setPanelAppearance(PanelAppearance::White);
    EXPECT_NEAR(look.assistantInk().redF(), 0.12, 0.01);
    settings.setPanelUserBlockHex("#00000020");
    EXPECT_NEAR(look.userInk().redF(), 0.12, 0.01);
    settings.setPanelBackgroundHex("#102030");
    EXPECT_NEAR(look.userInk().redF(), 0.95, 0.01);
}

TEST_F(PanelLookTest, TheApplicationFollowsTheDesktopUnlessTold) {
    EXPECT_FALSE(look.appIsDark());
    look.setDesktop({true, {}});
    EXPECT_TRUE(look.appIsDark());
    settings.setAppAppearance(AppAppearancePreference::Light);
    EXPECT_FALSE(look.appIsDark());
}

TEST_F(PanelLookTest, ChangesAreToldAtOnceAndOnce) {
    int told = 0;
    QObject::connect(&look, &PanelLook::changed, &look, [&] { ++told; });
    settings.setPanelGlassStyle(PanelGlassStyle::Tinted);
    EXPECT_EQ(told, 1);
    EXPECT_TRUE(look.isTinted());
    look.setDesktop({{}, false});
    look.setDesktop({{}, false});
    EXPECT_EQ(told, 2);
    EXPECT_TRUE(look.reducesMotion());
    look.setTier(PanelLook::Tier::Opaque);
    look.setTier(PanelLook::Tier::Opaque);
    EXPECT_EQ(told, 3);
}

TEST_F(PanelLookTest, IsAsTranslucentAsTheCompositorMakesIt) {
    look.setTranslucency(Translucency::Blurred);
    EXPECT_EQ(look.tier(), PanelLook::Tier::Blur);
    look.setTranslucency(Translucency::Plain);
    EXPECT_EQ(look.tier(), PanelLook::Tier::NoBlur);
    look.setTranslucency(Translucency::None);
    EXPECT_EQ(look.tier(), PanelLook::Tier::Opaque);
}

TEST_F(PanelLookTest, CustomColoursCarryTheirForeground) {
    EXPECT_FALSE(look.userBlock().isValid());
    EXPECT_FALSE(look.userInk().isValid());
    settings.setPanelUserBlockHex("#FFFFFF");
    EXPECT_EQ(look.userBlock(), QColor(Qt::white));
    EXPECT_NEAR(look.userInk().redF(), 0.12, 0.01);
    settings.setPanelAssistantBlockHex("#10203080");
    EXPECT_EQ(look.assistantBlock().alpha(), 0x80);
    EXPECT_NEAR(look.assistantInk().redF(), 0.95, 0.01);
}

TEST_F(PanelLookTest, WhereContrastMattersNoColourOfTheUsersOwnCounts) {
    settings.setPanelBackgroundHex("#808080");
    settings.setPanelUserBlockHex("#1F6F63");
    settings.setPanelAssistantBlockHex("#F4E9D8");
    settings.setPanelGlassStyle(PanelGlassStyle::Tinted);
    look.setDesktop({.wantsHighContrast = true});
    EXPECT_TRUE(look.hasHighContrast());
    EXPECT_TRUE(look.panelIsDark());
    EXPECT_FALSE(look.isTinted());
    for (const QColor& color : {look.background(), look.userBlock(), look.userInk(),
                                look.assistantBlock(), look.assistantInk()})
        EXPECT_FALSE(color.isValid());
    look.setDesktop({.wantsHighContrast = false});
    EXPECT_EQ(look.background(), QColor("#808080"));
}

TEST_F(PanelLookTest, TextKeepsToSizesThatThereIsRoomFor) {
    EXPECT_EQ(look.textScale(), 1);
    look.setTextScale(1.5);
    EXPECT_EQ(look.textScale(), 1.5);
    look.setTextScale(40);
    EXPECT_EQ(look.textScale(), 2);
    look.setTextScale(0);
    EXPECT_EQ(look.textScale(), 0.75);
}

TEST(TextScale, WhatTheDesktopHasHandedToTheScreenIsNotDoneTwice) {
    EXPECT_EQ(remainingTextScale(1, 1), 1);
    EXPECT_EQ(remainingTextScale(1.25, 1), 1.25);
    EXPECT_EQ(remainingTextScale(1.25, 1.25), 1);
    EXPECT_EQ(remainingTextScale(1.1, 106 / 96.0), 1) << "whole dots per inch";
    EXPECT_EQ(remainingTextScale(1.25, 2.5), 1) << "on a screen of twice the density";
    EXPECT_EQ(remainingTextScale(1.25, 2), 1.25);
    EXPECT_EQ(remainingTextScale(1, 2), 1);
}

TEST_F(PanelLookTest, AWindowFollowsTheApplicationAndTakesOnNoColourOfThePanel) {
    PanelLook window(settings, PanelLook::Surface::Window);
    settings.setPanelAppearance(PanelAppearance::Current);
    settings.setPanelGlassStyle(PanelGlassStyle::Tinted);
    settings.setPanelBackgroundHex("#0F4C47");
    settings.setPanelUserBlockHex("#112233");
    settings.setAppAppearance(AppAppearancePreference::Light);
    EXPECT_FALSE(window.panelIsDark());
    EXPECT_FALSE(window.isTinted());
    EXPECT_FALSE(window.background().isValid());
    EXPECT_FALSE(window.userBlock().isValid());
    settings.setAppAppearance(AppAppearancePreference::Dark);
    EXPECT_TRUE(window.panelIsDark());
}

TEST_F(PanelLookTest, AColourThatIsNoneIsTheThemes) {
    settings.setPanelBackgroundHex("#12");
    settings.setPanelAssistantBlockHex("nonsense");
    EXPECT_FALSE(look.background().isValid());
    EXPECT_FALSE(look.assistantBlock().isValid());
    EXPECT_FALSE(look.assistantInk().isValid());
}

} // namespace
} // namespace vorq
