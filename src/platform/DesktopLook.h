#pragma once

#include <optional>

namespace vorq {

/// What the desktop wants programs to look like. Nothing where it does not say.
struct DesktopLook {
    std::optional<bool> prefersDark;
    std::optional<bool> allowsAnimations;

    bool operator==(const DesktopLook&) const = default;
};

} // namespace vorq
