#pragma once

#include "engine/Analysis.h"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <vector>

namespace vorq::gateway {

/// Why a model stopped writing.
enum class FinishReason { None, Complete, Length, Filtered, Failed };

/// What one JSON object of a provider's answer says.
struct ChatChunk {
    /// Text to be added to the reply.
    std::string delta;
    /// Text of a provider that sends no deltas, or sends the whole so far beside them.
    std::string message;
    std::string refusal;
    /// The model thinks where nobody sees it, or prepares something other than text.
    bool hasThought = false;
    FinishReason finish = FinishReason::None;
    std::vector<Source> sources;
};

/// Throws EngineError for a chunk that reports a failure.
[[nodiscard]] ChatChunk readChunk(const nlohmann::json& object);

} // namespace vorq::gateway
