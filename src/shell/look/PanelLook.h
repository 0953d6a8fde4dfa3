#pragma once

#include "platform/Compositor.h"
#include "platform/DesktopLook.h"

#include <QColor>
#include <QObject>
#include <QString>

namespace vorq {

class AppearanceSettings;

/// The look of the panel and of the other windows, worked out from what the user chose and what the
/// desktop says. Colours are invalid where the theme's own apply. Main thread only.
class PanelLook final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool panelIsDark READ panelIsDark NOTIFY changed)
    Q_PROPERTY(bool appIsDark READ appIsDark NOTIFY changed)
    Q_PROPERTY(bool isTinted READ isTinted NOTIFY changed)
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY changed)
    /// What is drawn must be seen by who sees little: solid grounds, strong edges, and no colours
    /// of the user's own.
    Q_PROPERTY(bool hasHighContrast READ hasHighContrast NOTIFY changed)
    /// Times the usual size of text.
    Q_PROPERTY(double textScale READ textScale NOTIFY changed)
    Q_PROPERTY(vorq::PanelLook::Tier tier READ tier NOTIFY changed)
    Q_PROPERTY(QColor background READ background NOTIFY changed)
    /// What the panel's sheet comes down to under its background of its own.
    Q_PROPERTY(QColor ground READ ground NOTIFY changed)
    Q_PROPERTY(QColor userBlock READ userBlock NOTIFY changed)
    Q_PROPERTY(QColor userInk READ userInk NOTIFY changed)
    Q_PROPERTY(QColor assistantBlock READ assistantBlock NOTIFY changed)
    Q_PROPERTY(QColor assistantInk READ assistantInk NOTIFY changed)

  public:
    /// How much the window system lets shine through: with blur behind, without it, or nothing.
    enum class Tier { Blur, NoBlur, Opaque };
    Q_ENUM(Tier)

    /// What is drawn in it: the panel, or a window that follows the application's appearance and
    /// takes on none of the panel's own colours.
    enum class Surface { Panel, Window };

    /// The settings must outlive the look.
    explicit PanelLook(AppearanceSettings& settings, Surface surface = Surface::Panel);

    /// Whether it is drawn light on dark: the panel as its theme says, unless its own background
    /// can only be read the other way round; a window as the application.
    [[nodiscard]] bool panelIsDark() const;
    [[nodiscard]] bool appIsDark() const;
    [[nodiscard]] bool isTinted() const;
    [[nodiscard]] bool reducesMotion() const { return !m_desktop.allowsAnimations.value_or(true); }
    [[nodiscard]] bool hasHighContrast() const {
        return m_desktop.wantsHighContrast.value_or(false);
    }
    [[nodiscard]] double textScale() const { return m_textScale; }
    [[nodiscard]] Tier tier() const { return m_tier; }
    [[nodiscard]] QColor background() const;
    [[nodiscard]] QColor ground() const;
    [[nodiscard]] QColor userBlock() const;
    [[nodiscard]] QColor userInk() const;
    [[nodiscard]] QColor assistantBlock() const;
    [[nodiscard]] QColor assistantInk() const;

    void setDesktop(const DesktopLook& desktop);
    void setTier(Tier tier);
    /// As much as the compositor does.
    void setTranslucency(Translucency translucency);
    /// Kept within what the panel has room for.
    void setTextScale(double scale);

  signals:
    void changed();

  private:
    [[nodiscard]] QColor groundIn(bool isDark) const;
    [[nodiscard]] QColor inkOn(const QString& hex) const;
    [[nodiscard]] QColor chosen(const QString& hex) const;

    AppearanceSettings& m_settings;
    Surface m_surface;
    DesktopLook m_desktop;
    Tier m_tier = Tier::NoBlur;
    double m_textScale = 1;
};

} // namespace vorq
