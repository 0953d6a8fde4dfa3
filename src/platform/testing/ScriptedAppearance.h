#pragma once

#include "platform/DesktopLook.h"

namespace vorq {

/// A desktop that wants what a test says.
class ScriptedAppearance final : public DesktopAppearance {
  public:
    DesktopLook wanted;

    [[nodiscard]] DesktopLook look() const override { return wanted; }
};

} // namespace vorq
