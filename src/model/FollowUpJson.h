#pragma once

#include "model/VorqFollowUp.h"
#include "support/json/StrictJson.h"

namespace vorq {

// Of replies; kept chats have their own reading.
[[nodiscard]] bool read(strict_json::Element element, VorqFollowUp& followUp);

} // namespace vorq
