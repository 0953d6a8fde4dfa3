#include "shell/look/ApplicationPalette.h"
#include "platform/testing/ScriptedDefaults.h"
#include "shell/look/ApplicationFont.h"
#include "shell/look/Contrast.h"

#include <QApplication>
#include <QMenu>
#include <QMessageBox>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class ApplicationPaletteTest : public testing::Test {
  protected:
    ~ApplicationPaletteTest() override { QApplication::setPalette({}); }

    // Of widgets made now: those that are there are told by the event loop.
    template<typename Widget>
    [[nodiscard]] static bool isDark() {
        return Widget().palette().color(QPalette::Window).lightness() < 128;
    }

    ScriptedDefaults m_defaults;
    AppearanceSettings m_settings{m_defaults};
    ApplicationPalette m_palette{m_settings};
};

TEST_F(ApplicationPaletteTest, ADesktopThatDoesNotSayIsLight) {
    EXPECT_FALSE(isDark<QMenu>());
    EXPECT_FALSE(isDark<QMessageBox>());
}

TEST_F(ApplicationPaletteTest, FollowsTheDesktopUnlessTheUserHasChosen) {
    m_palette.setDesktop({.prefersDark = true, .allowsAnimations = {}});
    EXPECT_TRUE(isDark<QMenu>());
    EXPECT_TRUE(isDark<QMessageBox>());
    m_settings.setAppAppearance(AppAppearancePreference::Light);
    EXPECT_FALSE(isDark<QMenu>());
    m_settings.setAppAppearance(AppAppearancePreference::Dark);
    m_palette.setDesktop({.prefersDark = false, .allowsAnimations = {}});
    EXPECT_TRUE(isDark<QMenu>());
    EXPECT_TRUE(isDark<QMessageBox>());
    m_settings.setAppAppearance(AppAppearancePreference::System);
    EXPECT_FALSE(isDark<QMenu>());
}

TEST_F(ApplicationPaletteTest, WhatIsWrittenCanBeRead) {
    for (const auto chosen : {AppAppearancePreference::Light, AppAppearancePreference::Dark}) {
        m_settings.setAppAppearance(chosen);
        EXPECT_EQ(isDark<QMenu>(), chosen == AppAppearancePreference::Dark);
        for (const QPalette& palette : {QMenu().palette(), QMessageBox().palette()}) {
            const auto ratio = [&](QPalette::ColorRole ink, QPalette::ColorRole ground) {
                return Contrast::ratio(palette.color(ink), palette.color(ground));
            };
            EXPECT_GE(ratio(QPalette::WindowText, QPalette::Window), 7);
            EXPECT_GE(ratio(QPalette::Text, QPalette::Base), 7);
            EXPECT_GE(ratio(QPalette::ButtonText, QPalette::Button), 7);
            EXPECT_GE(ratio(QPalette::PlaceholderText, QPalette::Base), Contrast::readableText);
            EXPECT_GE(ratio(QPalette::HighlightedText, QPalette::Highlight),
                      Contrast::readableText);
        }
    }
}

TEST_F(ApplicationPaletteTest, HighContrastIsSevenToOneInAllThatIsRead) {
    m_palette.setDesktop({.wantsHighContrast = true});
    for (const auto chosen : {AppAppearancePreference::Light, AppAppearancePreference::Dark}) {
        m_settings.setAppAppearance(chosen);
        for (const QPalette& palette : {QMenu().palette(), QMessageBox().palette()}) {
            const auto expectStrong = [&](QPalette::ColorGroup group, QPalette::ColorRole ink,
                                          QPalette::ColorRole ground) {
                EXPECT_GE(Contrast::ratio(palette.color(group, ink), palette.color(ground)),
                          Contrast::strongText)
                    << group << ' ' << ink << ' ' << ground;
            };
            expectStrong(QPalette::Active, QPalette::WindowText, QPalette::Window);
            expectStrong(QPalette::Active, QPalette::Text, QPalette::Base);
            expectStrong(QPalette::Active, QPalette::ButtonText, QPalette::Button);
            expectStrong(QPalette::Active, QPalette::PlaceholderText, QPalette::Base);
            expectStrong(QPalette::Active, QPalette::HighlightedText, QPalette::Highlight);
            expectStrong(QPalette::Active, QPalette::Link, QPalette::Base);
            expectStrong(QPalette::Disabled, QPalette::Text, QPalette::Window);
            expectStrong(QPalette::Disabled, QPalette::ButtonText, QPalette::Button);
        }
    }
}

TEST_F(ApplicationPaletteTest, TextOfMenusAndDialogsGrowsAsTheDesktopWants) {
    ApplicationFont font;
    const double usual = QMenu().font().pointSizeF();
    font.setTextScale(1.5);
    EXPECT_NEAR(QMenu().font().pointSizeF(), 1.5 * usual, 0.01);
    EXPECT_NEAR(QMessageBox().font().pointSizeF(), 1.5 * usual, 0.01);
    font.setTextScale(1);
    EXPECT_NEAR(QMenu().font().pointSizeF(), usual, 0.01);
}

} // namespace
} // namespace vorq
