#pragma once

#include <QObject>
#include <QString>

#include <optional>

namespace vorq {

class Defaults;

enum class AppAppearancePreference { System, Light, Dark };
enum class PanelAppearance { Current, White };
enum class PanelGlassStyle { Clear, Tinted };

[[nodiscard]] QString rawString(AppAppearancePreference preference);
[[nodiscard]] QString rawString(PanelAppearance appearance);
[[nodiscard]] QString rawString(PanelGlassStyle style);

/// The appearance area: what the user chose, each field stored as it changes. Colours are hex
/// strings; an empty one means the theme's own. Main thread only.
class AppearanceSettings final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString appAppearance READ appAppearanceRaw NOTIFY changed)
    Q_PROPERTY(QString panelAppearance READ panelAppearanceRaw NOTIFY changed)
    Q_PROPERTY(QString panelGlassStyle READ panelGlassStyleRaw NOTIFY changed)
    Q_PROPERTY(QString panelBackgroundHex READ panelBackgroundHex WRITE setPanelBackgroundHex NOTIFY
                   changed)
    Q_PROPERTY(
        QString panelUserBlockHex READ panelUserBlockHex WRITE setPanelUserBlockHex NOTIFY changed)
    Q_PROPERTY(QString panelAssistantBlockHex READ panelAssistantBlockHex WRITE
                   setPanelAssistantBlockHex NOTIFY changed)

  public:
    /// The defaults must outlive this object.
    explicit AppearanceSettings(Defaults& defaults) : m_defaults(defaults) {}

    /// Reads what is stored but the colours.
    void restore();

    /// Reads the colours, carrying an older single block colour over to the two newer ones.
    void restoreColors();

    [[nodiscard]] AppAppearancePreference appAppearance() const { return m_appAppearance; }
    [[nodiscard]] PanelAppearance panelAppearance() const { return m_panelAppearance; }
    [[nodiscard]] PanelGlassStyle panelGlassStyle() const { return m_panelGlassStyle; }
    [[nodiscard]] QString appAppearanceRaw() const { return rawString(m_appAppearance); }
    [[nodiscard]] QString panelAppearanceRaw() const { return rawString(m_panelAppearance); }
    [[nodiscard]] QString panelGlassStyleRaw() const { return rawString(m_panelGlassStyle); }
    [[nodiscard]] const QString& panelBackgroundHex() const { return m_background; }
    [[nodiscard]] const QString& panelUserBlockHex() const { return m_userBlock; }
    [[nodiscard]] const QString& panelAssistantBlockHex() const { return m_assistantBlock; }

    void setAppAppearance(AppAppearancePreference preference);
    void setPanelAppearance(PanelAppearance appearance);
    void setPanelGlassStyle(PanelGlassStyle style);
    void setPanelBackgroundHex(const QString& hex);
    void setPanelUserBlockHex(const QString& hex);
    void setPanelAssistantBlockHex(const QString& hex);
    /// Shown for now and not stored: while the user is still choosing.
    void previewPanelBackgroundHex(const QString& hex) { showHex(m_background, hex); }
    void previewPanelUserBlockHex(const QString& hex) { showHex(m_userBlock, hex); }
    void resetCustomPanelColors();

  signals:
    void changed();

    /// The application should take on this appearance now.
    void appAppearanceApplied(vorq::AppAppearancePreference preference);

  private:
    void restoreBlockColors();
    void showHex(QString& field, const QString& hex);
    void setHex(QString& field, const QString& key, const QString& hex);

    Defaults& m_defaults;
    AppAppearancePreference m_appAppearance = AppAppearancePreference::System;
    PanelAppearance m_panelAppearance = PanelAppearance::Current;
    PanelGlassStyle m_panelGlassStyle = PanelGlassStyle::Clear;
    QString m_background;
    QString m_userBlock;
    QString m_assistantBlock;
};

} // namespace vorq
