#pragma once

#include "app/cli/OptionTable.h"

namespace vorq {

/// The text of --help.
[[nodiscard]] QString helpText(const CommandPage& page);

} // namespace vorq
