#pragma once

#include "engine/Engine.h"
#include "http/RequestRouter.h"

namespace vorq::gateway {

/// Adds the AI endpoints. `engine` outlives the router.
void addAiRoutes(RequestRouter& router, Engine& engine);

} // namespace vorq::gateway
