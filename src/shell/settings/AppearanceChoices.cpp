#include "shell/settings/AppearanceChoices.h"

#include "areas/AppearanceSettings.h"

#include <utility>

namespace vorq {

AppearanceChoices::AppearanceChoices(AppearanceSettings& settings) : m_settings(settings) {
    connect(&settings, &AppearanceSettings::changed, this, &AppearanceChoices::changed);
}

AppearanceChoices::Application AppearanceChoices::application() const {
    switch (m_settings.appAppearance()) {
    case AppAppearancePreference::Light:
        return Light;
    case AppAppearancePreference::Dark:
        return Dark;
    case AppAppearancePreference::System:
        break;
    }
    return MatchSystem;
}

bool AppearanceChoices::isPanelLight() const {
    return m_settings.panelAppearance() == PanelAppearance::White;
}

bool AppearanceChoices::isGlassTinted() const {
    return m_settings.panelGlassStyle() == PanelGlassStyle::Tinted;
}

QString AppearanceChoices::background() const {
    return m_settings.panelBackgroundHex();
}

QString AppearanceChoices::userBlock() const {
    return m_settings.panelUserBlockHex();
}

QString AppearanceChoices::assistantBlock() const {
    return m_settings.panelAssistantBlockHex();
}

bool AppearanceChoices::hasCustomColors() const {
    return !background().isEmpty() || !userBlock().isEmpty() || !assistantBlock().isEmpty();
}

void AppearanceChoices::setApplication(Application application) {
    m_settings.setAppAppearance(application == Light  ? AppAppearancePreference::Light
                                : application == Dark ? AppAppearancePreference::Dark
                                                      : AppAppearancePreference::System);
}

void AppearanceChoices::setPanelLight(bool isLight) {
    m_settings.setPanelAppearance(isLight ? PanelAppearance::White : PanelAppearance::Current);
}

void AppearanceChoices::setGlassTinted(bool isTinted) {
    m_settings.setPanelGlassStyle(isTinted ? PanelGlassStyle::Tinted : PanelGlassStyle::Clear);
}

void AppearanceChoices::setBackground(const QString& hex) {
    m_settings.setPanelBackgroundHex(hex);
}

void AppearanceChoices::setUserBlock(const QString& hex) {
    m_settings.setPanelUserBlockHex(hex);
}

void AppearanceChoices::setAssistantBlock(const QString& hex) {
    m_settings.setPanelAssistantBlockHex(hex);
}

void AppearanceChoices::resetColors() {
    if (!hasCustomColors()) return;
    m_former = {background(), userBlock(), assistantBlock()};
    m_settings.resetCustomPanelColors();
    emit colorsReset();
}

void AppearanceChoices::undoReset() {
    const Colors former = std::exchange(m_former, {});
    if (background().isEmpty()) setBackground(former.background);
    if (userBlock().isEmpty()) setUserBlock(former.userBlock);
    if (assistantBlock().isEmpty()) setAssistantBlock(former.assistantBlock);
}

} // namespace vorq
