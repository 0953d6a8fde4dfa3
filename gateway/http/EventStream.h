#pragma once

#include "engine/Analysis.h"
#include "engine/Engine.h"

#include <nlohmann/json_fwd.hpp>

#include <functional>
#include <string>

namespace vorq::gateway {

/// JSON on one line by every reader's notion of a line. Invalid UTF-8 becomes U+FFFD.
[[nodiscard]] std::string oneLineJson(const nlohmann::json& value);

/// {"error": sentence}
[[nodiscard]] nlohmann::json errorDocument(const std::string& sentence);

/// Takes the bytes of one event; false once the client is gone.
using EventSink = std::function<bool(const std::string& event)>;

/// Sends a reply as server-sent events, its failure as the last of them. Never throws. `stopping`
/// tells a server that stops from a client that left: the former is said to the client.
void sendEvents(ReplyStream& stream, const EventSink& sink, const Cancelled& cancelled,
                const Cancelled& stopping);

} // namespace vorq::gateway
