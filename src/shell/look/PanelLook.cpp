#include "shell/look/PanelLook.h"

#include "areas/AppearanceSettings.h"
#include "shell/look/ApplicationPalette.h"
#include "shell/look/Contrast.h"
#include "shell/look/HexColor.h"
#include "shell/look/ThemeColors.h"

#include <algorithm>

namespace vorq {
namespace {

// So much of a background covers the glass.
constexpr float backgroundShare = 0.85F;

constexpr double smallestTextScale = 0.75;
constexpr double largestTextScale = 2;

const QColor& inkOf(bool isDark) {
    return isDark ? ThemeColors::darkInk : ThemeColors::lightInk;
}

QColor colorOf(const QString& hex) {
    const std::optional<RgbaColor> color = HexColor::rgbaComponents(hex);
    if (!color) return {};
    return QColor::fromRgbF(static_cast<float>(color->red), static_cast<float>(color->green),
                            static_cast<float>(color->blue), static_cast<float>(color->alpha));
}

} // namespace

PanelLook::PanelLook(AppearanceSettings& settings, Surface surface)
    : m_settings(settings), m_surface(surface) {
    connect(&settings, &AppearanceSettings::changed, this, &PanelLook::changed);
}

bool PanelLook::panelIsDark() const {
    if (m_surface == Surface::Window) return appIsDark();
    const bool isDark = m_settings.panelAppearance() == PanelAppearance::Current;
    if (!background().isValid()) return isDark;
    const double inTheme = Contrast::ratio(inkOf(isDark), groundIn(isDark));
    const double inOther = Contrast::ratio(inkOf(!isDark), groundIn(!isDark));
    return inTheme >= std::min(inOther, Contrast::readableText) ? isDark : !isDark;
}

QColor PanelLook::groundIn(bool isDark) const {
    const QColor glass = isDark ? ThemeColors::darkGlass : ThemeColors::lightGlass;
    QColor own = background();
    if (!own.isValid()) return glass;
    own.setAlphaF(own.alphaF() * backgroundShare);
    return Contrast::over(own, glass);
}

// Where contrast matters most, no colour of the user's own stands in its way.
QColor PanelLook::chosen(const QString& hex) const {
    return hasHighContrast() || m_surface == Surface::Window ? QColor() : colorOf(hex);
}

// Where a block lets its ground shine through, the text stands on both.
QColor PanelLook::inkOn(const QString& hex) const {
    const QColor block = chosen(hex);
    if (!block.isValid()) return {};
    const QColor seen = Contrast::over(block, ground());
    const float level = static_cast<float>(HexColor::contrastingForeground(seen.name()));
    return QColor::fromRgbF(level, level, level);
}

bool PanelLook::appIsDark() const {
    return isApplicationDark(m_settings.appAppearance(), m_desktop);
}

bool PanelLook::isTinted() const {
    return m_settings.panelGlassStyle() == PanelGlassStyle::Tinted && !hasHighContrast() &&
           m_surface == Surface::Panel;
}

QColor PanelLook::background() const {
    return chosen(m_settings.panelBackgroundHex());
}
QColor PanelLook::ground() const {
    return groundIn(panelIsDark());
}
QColor PanelLook::userBlock() const {
    return chosen(m_settings.panelUserBlockHex());
}
QColor PanelLook::userInk() const {
    return inkOn(m_settings.panelUserBlockHex());
}
QColor PanelLook::assistantBlock() const {
    return chosen(m_settings.panelAssistantBlockHex());
}
QColor PanelLook::assistantInk() const {
    return inkOn(m_settings.panelAssistantBlockHex());
}

void PanelLook::setDesktop(const DesktopLook& desktop) {
    if (m_desktop == desktop) return;
    m_desktop = desktop;
    emit changed();
}

void PanelLook::setTextScale(double scale) {
    const double kept = std::clamp(scale, smallestTextScale, largestTextScale);
    if (m_textScale == kept) return;
    m_textScale = kept;
    emit changed();
}

void PanelLook::setTranslucency(Translucency translucency) {
    switch (translucency) {
    case Translucency::Blurred:
        return setTier(Tier::Blur);
    case Translucency::Plain:
        return setTier(Tier::NoBlur);
    case Translucency::None:
        return setTier(Tier::Opaque);
    }
}

void PanelLook::setTier(Tier tier) {
    if (m_tier == tier) return;
    m_tier = tier;
    emit changed();
}

} // namespace vorq
