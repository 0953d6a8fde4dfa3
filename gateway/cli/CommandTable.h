#pragma once

#include "support/OptionTable.h"

namespace vorq::gateway {

/// The commands of vorq-gateway.
[[nodiscard]] const CommandPage& commandPage();

} // namespace vorq::gateway
