#include "areas/AppearanceSettings.h"

#include "platform/Defaults.h"
#include "support/RawNames.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr auto appAppearances =
    rawNames<AppAppearancePreference>({{AppAppearancePreference::System, "system"},
                                       {AppAppearancePreference::Light, "light"},
                                       {AppAppearancePreference::Dark, "dark"}});
constexpr auto panelAppearances = rawNames<PanelAppearance>(
    {{PanelAppearance::Current, "current"}, {PanelAppearance::White, "white"}});
constexpr auto glassStyles = rawNames<PanelGlassStyle>(
    {{PanelGlassStyle::Clear, "clear"}, {PanelGlassStyle::Tinted, "tinted"}});

const QString appAppearanceKey = u"vorqAppAppearance"_s;
const QString panelAppearanceKey = u"vorq.panelAppearance"_s;
const QString glassStyleKey = u"vorq.panelGlassStyle"_s;
const QString backgroundKey = u"vorq.panelBackgroundHex"_s;
const QString userBlockKey = u"vorq.panelUserBlockHex"_s;
const QString assistantBlockKey = u"vorq.panelAssistantBlockHex"_s;
const QString olderBlockKey = u"vorq.panelBlockHex"_s;

} // namespace

QString rawString(AppAppearancePreference preference) {
    return appAppearances.nameOf(preference);
}
QString rawString(PanelAppearance appearance) {
    return panelAppearances.nameOf(appearance);
}
QString rawString(PanelGlassStyle style) {
    return glassStyles.nameOf(style);
}

void AppearanceSettings::restore() {
    if (const auto stored = appAppearances.caseOf(m_defaults.string(appAppearanceKey)))
        setAppAppearance(*stored);
    const auto panel = panelAppearances.caseOf(m_defaults.string(panelAppearanceKey));
    setPanelAppearance(panel.value_or(PanelAppearance::Current));
    if (const auto stored = glassStyles.caseOf(m_defaults.string(glassStyleKey)))
        setPanelGlassStyle(*stored);
}

void AppearanceSettings::restoreColors() {
    if (const auto stored = m_defaults.string(backgroundKey)) setPanelBackgroundHex(*stored);
    restoreBlockColors();
}

void AppearanceSettings::restoreBlockColors() {
    const auto user = m_defaults.string(userBlockKey);
    const auto assistant = m_defaults.string(assistantBlockKey);
    if (m_defaults.contains(userBlockKey) || m_defaults.contains(assistantBlockKey)) {
        if (user) setPanelUserBlockHex(*user);
        if (assistant) setPanelAssistantBlockHex(*assistant);
        return;
    }
    const QString older = m_defaults.string(olderBlockKey).value_or(QString());
    if (older.isEmpty()) return;
    // One write, so that a crash cannot leave half of it.
    m_defaults.apply({{userBlockKey, older}, {assistantBlockKey, older}, {olderBlockKey, {}}});
    setPanelUserBlockHex(older);
    setPanelAssistantBlockHex(older);
}

void AppearanceSettings::setAppAppearance(AppAppearancePreference preference) {
    m_appAppearance = preference;
    emit appAppearanceApplied(preference);
    m_defaults.keepString(appAppearanceKey, rawString(preference));
    emit changed();
}

void AppearanceSettings::setPanelAppearance(PanelAppearance appearance) {
    m_panelAppearance = appearance;
    m_defaults.keepString(panelAppearanceKey, rawString(appearance));
    emit changed();
}

void AppearanceSettings::setPanelGlassStyle(PanelGlassStyle style) {
    m_panelGlassStyle = style;
    m_defaults.keepString(glassStyleKey, rawString(style));
    emit changed();
}

void AppearanceSettings::showHex(QString& field, const QString& hex) {
    field = hex;
    emit changed();
}

void AppearanceSettings::setHex(QString& field, const QString& key, const QString& hex) {
    field = hex;
    m_defaults.keepString(key, hex);
    emit changed();
}

void AppearanceSettings::setPanelBackgroundHex(const QString& hex) {
    setHex(m_background, backgroundKey, hex);
}

void AppearanceSettings::setPanelUserBlockHex(const QString& hex) {
    setHex(m_userBlock, userBlockKey, hex);
}

void AppearanceSettings::setPanelAssistantBlockHex(const QString& hex) {
    setHex(m_assistantBlock, assistantBlockKey, hex);
}

void AppearanceSettings::resetCustomPanelColors() {
    setPanelBackgroundHex({});
    setPanelUserBlockHex({});
    setPanelAssistantBlockHex({});
}

} // namespace vorq
