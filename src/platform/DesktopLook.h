#pragma once

#include <optional>

namespace vorq {

/// What the desktop wants programs to look like. Nothing where it does not say.
struct DesktopLook {
    std::optional<bool> prefersDark = std::nullopt;
    std::optional<bool> allowsAnimations = std::nullopt;
    std::optional<bool> wantsHighContrast = std::nullopt;
    /// Times the usual size of text.
    std::optional<double> textScale = std::nullopt;

    bool operator==(const DesktopLook&) const = default;
};

} // namespace vorq
