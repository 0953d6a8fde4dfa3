#pragma once

#include "platform/Clock.h"

#include <functional>
#include <optional>

namespace vorq {

class Defaults;
class ShellNotifications;
class StatusItem;

/// Leads a user whom the panel cannot serve before they sign in to the entry of the menu for it.
/// Main thread only.
class AccessGuide {
  public:
    static constexpr Clock::Duration menuDelay = std::chrono::milliseconds(140);
    static constexpr Clock::Duration chimeDelay = std::chrono::milliseconds(100);

    /// All must outlive this object.
    struct Services {
        Clock& clock;
        Defaults& defaults;
        StatusItem& statusItem;
        ShellNotifications& notifications;
        std::function<void()> yieldPanelFocus;
        std::function<void()> openStatusItemMenu;
    };

    explicit AccessGuide(Services services);
    AccessGuide(const AccessGuide&) = delete;
    AccessGuide& operator=(const AccessGuide&) = delete;
    ~AccessGuide();

    /// Without an item in a tray it leaves the user with the panel, which offers to sign in itself.
    /// Nothing while it is under way.
    void guidePanelAccessFromNotification();

  private:
    void openMenu();
    void playPendingAccessGuideChime();

    Services m_services;
    bool m_isSignInPending = false;
    std::optional<Clock::TimerId> m_timer;
};

} // namespace vorq
