#include "areas/AppearanceSettings.h"

#include "platform/Defaults.h"

#include <array>
#include <utility>

namespace vorq {
namespace {

template<typename Enum, std::size_t Size>
using RawTable = std::array<std::pair<Enum, QStringView>, Size>;

constexpr RawTable<AppAppearancePreference, 3> appAppearances = {
    {{AppAppearancePreference::System, u"system"},
     {AppAppearancePreference::Light, u"light"},
     {AppAppearancePreference::Dark, u"dark"}}};
constexpr RawTable<PanelAppearance, 2> panelAppearances = {
    {{PanelAppearance::Current, u"current"}, {PanelAppearance::White, u"white"}}};
constexpr RawTable<PanelGlassStyle, 2> glassStyles = {
    {{PanelGlassStyle::Clear, u"clear"}, {PanelGlassStyle::Tinted, u"tinted"}}};

template<typename Enum, std::size_t Size>
QString rawOf(const RawTable<Enum, Size>& table, Enum value) {
    for (const auto& [known, raw] : table)
        if (known == value) return raw.toString();
    return {};
}

template<typename Enum, std::size_t Size>
std::optional<Enum> named(const RawTable<Enum, Size>& table, const std::optional<QString>& text) {
    for (const auto& [known, raw] : table)
        if (text && *text == raw) return known;
    return std::nullopt;
}

const QString appAppearanceKey = QStringLiteral("vorqAppAppearance");
const QString panelAppearanceKey = QStringLiteral("vorq.panelAppearance");
const QString glassStyleKey = QStringLiteral("vorq.panelGlassStyle");
const QString backgroundKey = QStringLiteral("vorq.panelBackgroundHex");
const QString userBlockKey = QStringLiteral("vorq.panelUserBlockHex");
const QString assistantBlockKey = QStringLiteral("vorq.panelAssistantBlockHex");
const QString olderBlockKey = QStringLiteral("vorq.panelBlockHex");

} // namespace

QString rawString(AppAppearancePreference preference) {
    return rawOf(appAppearances, preference);
}
QString rawString(PanelAppearance appearance) {
    return rawOf(panelAppearances, appearance);
}
QString rawString(PanelGlassStyle style) {
    return rawOf(glassStyles, style);
}

void AppearanceSettings::restore() {
    if (const auto stored = named(appAppearances, m_defaults.string(appAppearanceKey)))
        setAppAppearance(*stored);
    const auto panel = named(panelAppearances, m_defaults.string(panelAppearanceKey));
    setPanelAppearance(panel.value_or(PanelAppearance::Current));
    if (const auto stored = named(glassStyles, m_defaults.string(glassStyleKey)))
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
