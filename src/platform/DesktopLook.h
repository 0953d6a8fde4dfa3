#pragma once

#include "platform/PortSupport.h"

#include <QObject>

#include <optional>

namespace vorq {

/// A colour by its parts of 0 to 1, in sRGB.
struct LookColor {
    double red = 0;
    double green = 0;
    double blue = 0;

    bool operator==(const LookColor&) const = default;
};

/// What the desktop wants programs to look like. Nothing where it does not say.
struct DesktopLook {
    std::optional<bool> prefersDark = std::nullopt;
    std::optional<bool> allowsAnimations = std::nullopt;
    std::optional<bool> wantsHighContrast = std::nullopt;
    /// Times the usual size of text.
    std::optional<double> textScale = std::nullopt;
    /// Behind selected text.
    std::optional<LookColor> selection = std::nullopt;
    /// Of what is selected otherwise, and of what stands out.
    std::optional<LookColor> accent = std::nullopt;

    bool operator==(const DesktopLook&) const = default;
};

/// Follows what the desktop wants. Main thread only; nothing waits.
class DesktopAppearance : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    /// Whether the desktop says anything of it, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    [[nodiscard]] virtual DesktopLook look() const = 0;

  signals:
    void changed();
};

} // namespace vorq
