#include "platform/testing/ScriptedScreens.h"

namespace vorq {

void ScriptedScreens::change(std::vector<Screen> screens) {
    all = std::move(screens);
    emit changed();
}

std::optional<QRectF> ScriptedScreens::windowFrame(WindowId window) const {
    const auto found = windows.find(window);
    return found == windows.end() ? std::nullopt : std::optional(found->second);
}

double ScriptedScreens::baseline() const {
    return all.empty() ? 0 : all.front().frame.height();
}

} // namespace vorq
