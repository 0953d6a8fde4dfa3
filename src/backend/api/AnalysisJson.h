#pragma once

#include "backend/api/AIAnalysis.h"
#include "model/FollowUpJson.h"

namespace vorq {

// A part of an analysis that the events of a stream carry too.
[[nodiscard]] bool read(strict_json::Element element, AISource& source);

} // namespace vorq
