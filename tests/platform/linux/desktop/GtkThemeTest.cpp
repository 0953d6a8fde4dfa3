#include "platform/linux/desktop/GtkTheme.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr LookColor blue{.red = 0.2, .green = 0.4, .blue = 0.8};
constexpr LookColor orange{.red = 1, .green = 0.4, .blue = 0};

class GtkThemeTest : public testing::Test {
  protected:
    void put(const QString& name, const QByteArray& content) const {
        const QString path = m_system.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    [[nodiscard]] std::optional<LookColor> selection(const QString& theme) const {
        return gtkThemeSelection(theme, {m_user.path(), m_system.path()});
    }

    QTemporaryDir m_user;
    QTemporaryDir m_system;
};

TEST_F(GtkThemeTest, NamesItsColourInItsSheet) {
    put("A/gtk-3.0/gtk.css", "* { color: red; }\n@define-color theme_selected_bg_color #3366cc;\n");
    EXPECT_EQ(selection("A"), blue);
}

TEST_F(GtkThemeTest, MayHaveAnotherNameForIt) {
    put("A/gtk-3.0/gtk.css", "@define-color theme_selected_bg_color_a #36c;"
                             "@define-color theme_selected_bg_color @theme_selected_bg_color_a;");
    EXPECT_EQ(selection("A"), blue);
}

TEST_F(GtkThemeTest, TheLastOfSeveralColoursCounts) {
    put("A/gtk-3.0/gtk.css", "@define-color theme_selected_bg_color #3366cc;"
                             "@define-color theme_selected_bg_color #ff6600;");
    EXPECT_EQ(selection("A"), orange);
}

TEST_F(GtkThemeTest, NamesThatGoInCirclesAreNone) {
    put("A/gtk-3.0/gtk.css", "@define-color theme_selected_bg_color @other;"
                             "@define-color other @theme_selected_bg_color;");
    EXPECT_EQ(selection("A"), std::nullopt);
}

TEST_F(GtkThemeTest, ACompiledSheetIsAccompaniedByTheSettingsOfTheOlderToolkit) {
    put("A/gtk-3.0/gtk.css", "@import url(\"resource:///org/a/gtk-main.css\");");
    put("A/gtk-2.0/gtkrc",
        "gtk-color-scheme = \"bg_color:#ffffff\\nselected_bg_color: #3366CC\\nfg:#000\"\n");
    EXPECT_EQ(selection("A"), blue);
}

TEST_F(GtkThemeTest, TheUsersOwnIsReadFirst) {
    put("A/gtk-3.0/gtk.css", "@define-color theme_selected_bg_color #3366cc;");
    QDir(m_user.path()).mkpath("A/gtk-3.0");
    QFile own(m_user.filePath("A/gtk-3.0/gtk.css"));
    ASSERT_TRUE(own.open(QIODevice::WriteOnly));
    own.write("@define-color theme_selected_bg_color #ff6600;");
    own.close();
    EXPECT_EQ(selection("A"), orange);
}

TEST_F(GtkThemeTest, SomeComeWithTheToolkit) {
    EXPECT_TRUE(selection("Adwaita"));
    EXPECT_NE(selection("Adwaita"), selection("Adwaita-dark"));
}

TEST_F(GtkThemeTest, WhatIsNoColourIsNone) {
    for (const char* value : {"", "#", "#12345g", "blue", "alpha(#3366cc, 0.5)", "@", "@missing"}) {
        put("A/gtk-3.0/gtk.css", QByteArray("@define-color theme_selected_bg_color ") + value);
        EXPECT_EQ(selection("A"), std::nullopt) << value;
    }
    EXPECT_EQ(selection("missing"), std::nullopt);
    EXPECT_EQ(selection(""), std::nullopt);
}

TEST_F(GtkThemeTest, ANameLeadsNowhereElse) {
    put("A/gtk-3.0/gtk.css", "@define-color theme_selected_bg_color #3366cc;");
    EXPECT_EQ(selection("../" + QFileInfo(m_system.path()).fileName() + "/A"), std::nullopt);
    EXPECT_EQ(selection(".."), std::nullopt);
}

} // namespace
} // namespace vorq
