#include "shell/PanelLook.h"

#include "core/AppearanceSettings.h"
#include "shell/HexColor.h"

namespace vorq {
namespace {

constexpr double middleGrey = 0.5;

QColor colorOf(const QString& hex) {
    const std::optional<RgbaColor> color = HexColor::rgbaComponents(hex);
    if (!color) return {};
    return QColor::fromRgbF(static_cast<float>(color->red), static_cast<float>(color->green),
                            static_cast<float>(color->blue), static_cast<float>(color->alpha));
}

QColor inkOn(const QString& hex) {
    if (!HexColor::rgbaComponents(hex)) return {};
    const float level = static_cast<float>(HexColor::contrastingForeground(hex));
    return QColor::fromRgbF(level, level, level);
}

} // namespace

PanelLook::PanelLook(AppearanceSettings& settings) : m_settings(settings) {
    connect(&settings, &AppearanceSettings::changed, this, &PanelLook::changed);
}

bool PanelLook::panelIsDark() const {
    const QString& background = m_settings.panelBackgroundHex();
    if (HexColor::rgbaComponents(background))
        return HexColor::contrastingForeground(background) > middleGrey;
    return m_settings.panelAppearance() == PanelAppearance::Current;
}

bool PanelLook::appIsDark() const {
    const AppAppearancePreference chosen = m_settings.appAppearance();
    if (chosen == AppAppearancePreference::System) return m_desktop.prefersDark.value_or(false);
    return chosen == AppAppearancePreference::Dark;
}

bool PanelLook::isTinted() const {
    return m_settings.panelGlassStyle() == PanelGlassStyle::Tinted;
}

QColor PanelLook::background() const {
    return colorOf(m_settings.panelBackgroundHex());
}
QColor PanelLook::userBlock() const {
    return colorOf(m_settings.panelUserBlockHex());
}
QColor PanelLook::userInk() const {
    return inkOn(m_settings.panelUserBlockHex());
}
QColor PanelLook::assistantBlock() const {
    return colorOf(m_settings.panelAssistantBlockHex());
}
QColor PanelLook::assistantInk() const {
    return inkOn(m_settings.panelAssistantBlockHex());
}

void PanelLook::setDesktop(const DesktopLook& desktop) {
    if (m_desktop == desktop) return;
    m_desktop = desktop;
    emit changed();
}

void PanelLook::setTier(Tier tier) {
    if (m_tier == tier) return;
    m_tier = tier;
    emit changed();
}

} // namespace vorq
