#include "engine/Engine.h"

#include <nlohmann/json.hpp>

namespace vorq::gateway {

nlohmann::json encode(const FinishedReply& reply) {
    return std::visit([](const auto& kind) { return encode(kind); }, reply);
}

} // namespace vorq::gateway
