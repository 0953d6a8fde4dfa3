#pragma once

#include <QString>

namespace vorq {

/// What the user can do where something is missing, in the panel and in the menu alike.
inline const QString signInAdvice =
    QStringLiteral("To sign in, run: vorq open \"$(vorq-gateway handoff)\"");
inline const QString accessibilityAdvice =
    QStringLiteral("Vorq cannot read other applications: accessibility is off. Turn it on in the "
                   "menu of Vorq, or run: vorq enable-accessibility");

} // namespace vorq
