#pragma once

#include "engine/embedded/rewriting/RewritePrompt.h"

#include <cstddef>
#include <expected>
#include <string>
#include <string_view>

namespace vorq::gateway {

inline constexpr std::string_view kNoWriting =
    "Writing or rewriting needs a language model, and none is connected to this gateway.";

/// In bytes, of a text that rules change.
inline constexpr std::size_t kLongestRewrite = std::size_t{256} * 1024;

/// What rules make of a prompt of the writing tools on a selection. The error is a sentence for the
/// writer: what is asked needs a model, the text is too long, or there is nothing that a rule could
/// change.
[[nodiscard]] std::expected<std::string, std::string_view>
rewrittenByRule(const RewritePrompt& prompt, std::string_view selection);

} // namespace vorq::gateway
