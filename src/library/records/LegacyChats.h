#pragma once

#include "library/records/HubAIChat.h"
#include "library/records/SavedChat.h"

#include <vector>

namespace vorq {

/// The panel chats of older versions as chats of the hub, in their order, without those that the
/// hub has already: a chat of the same title with as many messages.
[[nodiscard]] std::vector<HubAIChat> hubChatsFromPanel(const std::vector<SavedChat>& legacy,
                                                       const std::vector<HubAIChat>& existing);

} // namespace vorq
