#pragma once

#include "support/StrictJson.h"
#include "support/VorqFollowUp.h"

namespace vorq {

// Of replies; kept chats have their own reading.
[[nodiscard]] bool read(strict_json::Element element, VorqFollowUp& followUp);

} // namespace vorq
