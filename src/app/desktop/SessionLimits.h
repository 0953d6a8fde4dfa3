#pragma once

#include <QStringList>

namespace vorq {

class DesktopPlatform;

/// Why ports that the user would miss do not work in this session, each sentence once. Hot keys
/// have notices of their own. Needs a QGuiApplication.
[[nodiscard]] QStringList sessionLimits(DesktopPlatform& platform);

} // namespace vorq
