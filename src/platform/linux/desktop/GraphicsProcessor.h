#pragma once

#include <QString>

namespace vorq {

/// Whether there is a graphics processor that this user may draw with. Looks at the device files
/// below the folder only: a graphics library that is asked stays loaded. Any thread.
[[nodiscard]] bool hasGraphicsProcessor(const QString& devices = QStringLiteral("/dev"));

} // namespace vorq
