#pragma once

#include <cstdint>

namespace vorq {

/// What the user can choose in the menu of the status item, except the panel's look.
enum class StatusCommand : std::uint8_t {
    ToggleVorq,
    SaveChat,
    SaveHighlight,
    PushNoteDraft,
    SaveHeldText,
    DiscardHeldText,
    ClearChat,
    OpenAccessibility,
    EnableBackendAtLogin,
    DisableBackendAtLogin,
    SignIn,
    SignOut,
    DeleteVorq,
    Quit,
};

} // namespace vorq
