#include "shell/look/ApplicationPalette.h"

#include "shell/look/Contrast.h"
#include "shell/look/WindowColors.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

namespace vorq {
namespace {

constexpr const char* menuClass = "QMenu";
constexpr const char* tipClass = "QTipLabel";
// The toolkit's own style draws menus so much lighter than the field's colour.
constexpr int menuLightness = 108;

QPalette paletteOf(const WindowColors& colors) {
    QPalette palette(colors.button, colors.window);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, colors.ink);
        palette.setColor(QPalette::Disabled, role, colors.disabledInk);
    }
    palette.setColor(QPalette::Base, colors.field);
    palette.setColor(QPalette::AlternateBase, colors.window);
    palette.setColor(QPalette::PlaceholderText, colors.placeholderInk);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Highlight, colors.accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colors.button);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, colors.disabledInk);
    palette.setColor(QPalette::Link, colors.linkInk);
    palette.setColor(QPalette::LinkVisited, colors.linkInk);
    palette.setColor(QPalette::ToolTipBase, colors.tip);
    palette.setColor(QPalette::ToolTipText, colors.ink);
    return palette;
}

QPalette menuPaletteOf(const WindowColors& colors) {
    QPalette palette = paletteOf(colors);
    palette.setColor(QPalette::Window, colors.menu);
    palette.setColor(QPalette::Base, colors.menu.darker(menuLightness));
    // Some styles draw what is disabled with a shadow of light.
    palette.setColor(QPalette::Light, colors.menu);
    return palette;
}

QPalette tipPaletteOf(const WindowColors& colors) {
    QPalette palette = paletteOf(colors);
    palette.setColor(QPalette::Window, colors.tip);
    return palette;
}

const WindowColors& colorsFor(bool isDark, bool hasHighContrast) {
    if (hasHighContrast) return isDark ? strongDarkWindowColors : strongLightWindowColors;
    return isDark ? darkWindowColors : lightWindowColors;
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

// Whether the palette was given by the desktop, and agrees with what it wants.
bool isDesktopsOwn(const QPalette& palette, const DesktopLook& desktop) {
    if (palette == QApplication::style()->standardPalette()) return false;
    const double contrast =
        Contrast::ratio(palette.color(QPalette::WindowText), palette.color(QPalette::Window));
    if (desktop.wantsHighContrast.value_or(false) && contrast < Contrast::strongText) return false;
    return desktop.prefersDark.value_or(isDark(palette)) == isDark(palette);
}

} // namespace

bool isApplicationDark(AppAppearancePreference preference, const DesktopLook& desktop) {
    if (preference == AppAppearancePreference::System) return desktop.prefersDark.value_or(false);
    return preference == AppAppearancePreference::Dark;
}

ApplicationPalette::ApplicationPalette(const AppearanceSettings& settings) : m_settings(settings) {
    connect(&settings, &AppearanceSettings::changed, this, &ApplicationPalette::apply);
    apply();
}

void ApplicationPalette::setDesktop(const DesktopLook& desktop) {
    m_desktop = desktop;
    apply();
}

// The desktop's own palette is known only once ours is taken away.
void ApplicationPalette::apply() {
    const std::tuple wanted(m_settings.appAppearance(), m_desktop.prefersDark,
                            m_desktop.wantsHighContrast);
    if (m_applied == wanted) return;
    m_applied = wanted;
    for (const char* widgets : {menuClass, tipClass})
        QApplication::setPalette({}, widgets);
    QApplication::setPalette({});
    const bool followsDesktop = m_settings.appAppearance() == AppAppearancePreference::System;
    if (followsDesktop && isDesktopsOwn(QGuiApplication::palette(), m_desktop)) return;
    const WindowColors& colors = colorsFor(isApplicationDark(m_settings.appAppearance(), m_desktop),
                                           m_desktop.wantsHighContrast.value_or(false));
    QApplication::setPalette(paletteOf(colors));
    QApplication::setPalette(menuPaletteOf(colors), menuClass);
    QApplication::setPalette(tipPaletteOf(colors), tipClass);
}

} // namespace vorq
