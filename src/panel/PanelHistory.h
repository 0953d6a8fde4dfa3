#pragma once

#include "conversation/VorqMessage.h"
#include "library/records/SavedChat.h"

#include <optional>
#include <span>
#include <vector>

namespace vorq {

/// The panel conversation as a chat to keep, without the greeting, the commands to save it and
/// what is not finished. Nothing if no message is left.
[[nodiscard]] std::optional<SavedChat> savedChat(std::span<const VorqMessage> messages,
                                                 Date createdAt);

/// The messages of a kept conversation for the panel, without the blank ones. What the program said
/// by itself is known as such, in chats of versions that did not mark it by its words.
[[nodiscard]] std::vector<VorqMessage> panelMessages(const SavedChat& chat);

/// The latest reply that is finished, as it stands; "" if there is none. A notice is no reply.
[[nodiscard]] QString latestAssistantText(std::span<const VorqMessage> messages);

/// What the panel shows that can be exported as a text: the latest finished reply, else all that
/// is settled; "" if there is nothing.
[[nodiscard]] QString exportedText(std::span<const VorqMessage> messages);

} // namespace vorq
