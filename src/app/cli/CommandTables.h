#pragma once

#include "app/cli/OptionTable.h"

namespace vorq {

/// The pages of `vorq --help`, `vorq notes --help`, `vorq chats --help` and `vorq preview --help`,
/// in this order.
[[nodiscard]] std::span<const CommandPage> commandPages();

/// The row of a command, whose options its arguments may have; nothing for a name that is in no
/// row of the page.
[[nodiscard]] const CommandRow* commandNamed(const CommandPage& page, QStringView name);

} // namespace vorq
