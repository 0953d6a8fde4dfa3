#include "engine/Engine.h"

#include "engine/ReadyReply.h"

#include <nlohmann/json.hpp>

namespace vorq::gateway {

nlohmann::json encode(const FinishedReply& reply) {
    return std::visit([](const auto& kind) { return encode(kind); }, reply);
}

std::unique_ptr<ReplyStream> Engine::models() {
    return std::make_unique<ReadyReply>(ModelList{});
}

} // namespace vorq::gateway
