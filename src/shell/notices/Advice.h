#pragma once

#include <QString>

namespace vorq {

/// What the user can do where something is missing, in the panel and in the menu alike.
[[nodiscard]] QString signInAdvice();
[[nodiscard]] QString accessibilityAdvice();

} // namespace vorq
