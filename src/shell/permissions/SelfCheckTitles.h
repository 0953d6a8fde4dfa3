#pragma once

#include <QString>

namespace vorq {

/// What a check of the self-test looks at, in the user's language; the id itself for one that is
/// not known.
[[nodiscard]] QString selfCheckTitle(const QString& id);

} // namespace vorq
