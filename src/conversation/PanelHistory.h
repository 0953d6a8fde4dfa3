#pragma once

#include "conversation/VorqMessage.h"
#include "library/SavedChat.h"

#include <optional>
#include <span>

namespace vorq {

/// The panel conversation as a chat to keep, without the greeting, the commands to save it and
/// what is not finished. Nothing if no message is left.
[[nodiscard]] std::optional<SavedChat> savedChat(std::span<const VorqMessage> messages,
                                                 Date createdAt);

} // namespace vorq
