#pragma once

#include "platform/Clock.h"

#include <optional>

namespace vorq {

class Defaults;
class StatusItem;

/// Shows who has just installed Vorq where it is: the status item calls for attention until the
/// user has found it, and never again. Main thread only.
class MenuBarAttention {
  public:
    static constexpr Clock::Duration retryDelay = std::chrono::milliseconds(120);
    static constexpr int mostRetries = 40;

    /// All must outlive this object. A copy that is not installed never calls.
    struct Services {
        Clock& clock;
        Defaults& defaults;
        StatusItem& statusItem;
        bool isInstalled = false;
    };

    explicit MenuBarAttention(const Services& services);
    MenuBarAttention(const MenuBarAttention&) = delete;
    MenuBarAttention& operator=(const MenuBarAttention&) = delete;
    ~MenuBarAttention();

    /// An item that is not in its tray yet is waited for a few seconds.
    void startInstalledMenuBarAttentionIfNeeded(int attempt = 0);

    /// The user has found the item, if it was calling.
    void stop();

  private:
    void startNow();
    void cancelRetry();

    Services m_services;
    bool m_didStartThisLaunch = false;
    std::optional<Clock::TimerId> m_retry;
};

} // namespace vorq
