#pragma once

#include "engine/Engine.h"
#include "provider/ProviderConfig.h"

#include <string>
#include <string_view>

namespace vorq::gateway {

/// Failures of a provider as sentences for the user. None ever holds the provider's key, and none
/// has status 401, which would tell the client that its own session ended.

[[nodiscard]] EngineError unreachable(const ProviderConfig& config);
[[nodiscard]] EngineError tooSlow(const ProviderConfig& config);
[[nodiscard]] EngineError brokeOff();
[[nodiscard]] EngineError unreadable();
[[nodiscard]] EngineError webPage();
[[nodiscard]] EngineError emptyReply();
/// The model's own refusal.
[[nodiscard]] EngineError declined(const std::string& message);
[[nodiscard]] EngineError filtered();
[[nodiscard]] EngineError lengthReached();
[[nodiscard]] EngineError thoughtTooLong();
[[nodiscard]] EngineError tooLong();
/// For an answer with an error status; `body` is whatever document came with it.
[[nodiscard]] EngineError refused(const ProviderConfig& config, long status, std::string_view body);
/// For an error in the midst of a stream; `message` is the provider's own.
[[nodiscard]] EngineError gaveUp(const std::string& message);

/// `text` with every occurrence of the key blotted out, and then no longer than a sentence or two:
/// cut the other way round, half a key could be left.
[[nodiscard]] std::string withoutKey(const ProviderConfig& config, std::string text);

} // namespace vorq::gateway
