#pragma once

#include "backend/AIAnalysis.h"
#include "backend/StrictJson.h"

namespace vorq {

// The parts of an analysis that the events of a stream carry too.
[[nodiscard]] bool read(strict_json::Element element, AISource& source);
[[nodiscard]] bool read(strict_json::Element element, VorqFollowUp& followUp);

} // namespace vorq
