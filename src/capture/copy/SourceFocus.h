#pragma once

#include "platform/Clock.h"
#include "platform/Workspace.h"
#include "platform/copying/KeyPoster.h"

#include <QCoroTask>
#include <QString>

#include <optional>
#include <stop_token>

namespace vorq {

/// Gives another application the keyboard for a chord, and gives it back to whoever had it. Main
/// thread only.
class SourceFocus {
  public:
    struct Services {
        Clock& clock;
        KeyPoster& keys;
        Workspace& workspace;
    };

    /// The services must outlive this object and what it has under way.
    explicit SourceFocus(const Services& services) : m_services(services) {}

    /// Whether the user holds Shift, Control or Alt. The key of hot keys does not count.
    [[nodiscard]] bool hasLeftoverModifiers() const;

    /// Waits until none of these is held, in so many rounds of 20 ms at most.
    QCoro::Task<> waitForModifierKeysReleased(int maxAttempts, std::stop_token stop);

    /// Asks for the application to come to the front and waits a moment, unless it is there, is not
    /// known or is Vorq.
    QCoro::Task<> activateSourceApp(std::optional<ProcessId> source, std::stop_token stop);

    [[nodiscard]] bool isFrontmost(ProcessId process) const;

    /// Asks for it once a round of 40 ms until the application is in front; false if it never was.
    QCoro::Task<bool> bringToFront(ProcessId process, int rounds, std::stop_token stop);

    /// Gives the keyboard back to the window that had it before the process, unless the user has
    /// gone on to another one meanwhile.
    void giveBack(ProcessId process);

    /// Whether the process is Vorq, by its number or its application's identifier.
    [[nodiscard]] bool isVorq(ProcessId process) const;

  private:
    void activate(ProcessId process);
    [[nodiscard]] QString identifierOf(ProcessId process) const;

    Services m_services;
    std::optional<WindowId> m_displaced;
};

} // namespace vorq
