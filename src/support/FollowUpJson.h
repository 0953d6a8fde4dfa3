#pragma once

#include "support/StrictJson.h"
#include "support/VorqFollowUp.h"

namespace vorq {

// A follow-up stands in replies and in kept chats alike.
[[nodiscard]] bool read(strict_json::Element element, VorqFollowUp& followUp);

} // namespace vorq
