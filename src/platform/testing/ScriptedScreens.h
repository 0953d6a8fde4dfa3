#pragma once

#include "platform/Screens.h"

#include <map>

namespace vorq {

/// Screens, a pointer and windows wherever a test puts them.
class ScriptedScreens final : public Screens {
  public:
    std::vector<Screen> all{{.name = "one",
                             .frame = {0, 0, 1920, 1080},
                             .visibleFrame = {0, 0, 1920, 1040},
                             .scale = 1}};
    QPointF pointerAt{100, 100};
    std::map<WindowId, QRectF> windows;

    /// Replaces the screens and tells of it.
    void change(std::vector<Screen> screens);

    [[nodiscard]] std::vector<Screen> screens() const override { return all; }
    [[nodiscard]] QPointF pointer() const override { return pointerAt; }
    [[nodiscard]] std::optional<QRectF> windowFrame(WindowId window) const override;

  protected:
    [[nodiscard]] double baseline() const override;
};

} // namespace vorq
