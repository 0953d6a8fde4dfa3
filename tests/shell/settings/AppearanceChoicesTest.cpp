#include "shell/settings/AppearanceChoices.h"

#include "areas/AppearanceSettings.h"
#include "platform/testing/ScriptedDefaults.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace vorq {
namespace {

class AppearanceChoicesTest : public testing::Test {
  protected:
    [[nodiscard]] QString stored(const QString& key) const {
        return defaults.string(key).value_or("(none)");
    }

    ScriptedDefaults defaults;
    AppearanceSettings settings{defaults};
    AppearanceChoices choices{settings};
};

TEST_F(AppearanceChoicesTest, EachChoiceIsStoredAtOnce) {
    choices.setApplication(AppearanceChoices::Dark);
    choices.setPanelLight(true);
    choices.setGlassTinted(true);
    choices.setUserBlock("#112233");
    EXPECT_EQ(stored("vorqAppAppearance"), "dark");
    EXPECT_EQ(stored("vorq.panelAppearance"), "white");
    EXPECT_EQ(stored("vorq.panelGlassStyle"), "tinted");
    EXPECT_EQ(stored("vorq.panelUserBlockHex"), "#112233");
}

TEST_F(AppearanceChoicesTest, WhatIsChosenElsewhereShows) {
    QSignalSpy changed(&choices, &AppearanceChoices::changed);
    settings.setAppAppearance(AppAppearancePreference::Light);
    settings.setPanelAppearance(PanelAppearance::White);
    EXPECT_EQ(choices.application(), AppearanceChoices::Light);
    EXPECT_TRUE(choices.isPanelLight());
    EXPECT_EQ(changed.count(), 2);
}

TEST_F(AppearanceChoicesTest, ResettingColorsCanBeTakenBack) {
    choices.setBackground("#010203");
    choices.setAssistantBlock("#AABBCC");
    QSignalSpy reset(&choices, &AppearanceChoices::colorsReset);
    choices.resetColors();
    EXPECT_FALSE(choices.hasCustomColors());
    EXPECT_EQ(reset.count(), 1);
    choices.undoReset();
    EXPECT_EQ(choices.background(), "#010203");
    EXPECT_EQ(choices.userBlock(), "");
    EXPECT_EQ(choices.assistantBlock(), "#AABBCC");
}

TEST_F(AppearanceChoicesTest, WhatIsChosenAfterAResetStays) {
    choices.setBackground("#010203");
    choices.setUserBlock("#040506");
    choices.resetColors();
    choices.setUserBlock("#FFFFFF");
    choices.undoReset();
    EXPECT_EQ(choices.background(), "#010203");
    EXPECT_EQ(choices.userBlock(), "#FFFFFF");
}

TEST_F(AppearanceChoicesTest, WithoutColorsThereIsNothingToReset) {
    choices.setBackground("#010203");
    choices.resetColors();
    QSignalSpy reset(&choices, &AppearanceChoices::colorsReset);
    choices.resetColors();
    EXPECT_EQ(reset.count(), 0);
    choices.undoReset();
    EXPECT_EQ(choices.background(), "#010203") << "the first reset is what is taken back";
}

} // namespace
} // namespace vorq
