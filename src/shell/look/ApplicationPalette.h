#pragma once

#include "areas/AppearanceSettings.h"
#include "platform/DesktopLook.h"

#include <QObject>

#include <optional>
#include <tuple>

namespace vorq {

/// Whether windows and menus are drawn light on dark. A desktop that does not say counts as light.
[[nodiscard]] bool isApplicationDark(AppAppearancePreference preference,
                                     const DesktopLook& desktop);

/// Draws the toolkit's menus, alerts and dialogs light or dark as the user chose, or the desktop
/// wants where they chose nothing. A desktop that has colours of its own for programs keeps them
/// then. Needs a QApplication. Main thread only.
class ApplicationPalette final : public QObject {
    Q_OBJECT

  public:
    /// The settings must outlive this object.
    explicit ApplicationPalette(const AppearanceSettings& settings);

    void setDesktop(const DesktopLook& desktop);

  private:
    void apply();

    const AppearanceSettings& m_settings;
    DesktopLook m_desktop;
    std::optional<std::tuple<AppAppearancePreference, std::optional<bool>, std::optional<bool>>>
        m_applied;
};

} // namespace vorq
