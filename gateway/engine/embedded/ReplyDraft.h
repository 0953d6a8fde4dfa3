#pragma once

#include "engine/Analysis.h"
#include "engine/Engine.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorq::gateway {

/// A finished reply in the pieces in which it is streamed; put together they are its Markdown.
struct ReplyDraft {
    std::vector<std::string> pieces;
    std::optional<FollowUp> followUp;

    [[nodiscard]] std::string text() const;
};

/// Title, key sentences, key terms and what to ask next.
[[nodiscard]] ReplyDraft draftAnalysis(std::string_view text);

/// What the selected text, or else the conversation, says to a prompt. Throws EngineError where the
/// prompt asks for new writing and the caller would take the reply as such.
[[nodiscard]] ReplyDraft draftReply(const PromptRequest& request);

} // namespace vorq::gateway
