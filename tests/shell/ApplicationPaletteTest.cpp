#include "shell/ApplicationPalette.h"
#include "platform/testing/MemoryDefaults.h"
#include "shell/Contrast.h"

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

    MemoryDefaults m_defaults;
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

} // namespace
} // namespace vorq
