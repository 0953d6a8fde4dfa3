#pragma once

#include "platform/Workspace.h"

#include <optional>

class QUrl;

namespace vorq {

/// The browser sign-in that may be waiting for its way back into the program. Main thread only.
class PendingSignIn {
  public:
    PendingSignIn() = default;
    PendingSignIn(const PendingSignIn&) = delete;
    PendingSignIn& operator=(const PendingSignIn&) = delete;
    virtual ~PendingSignIn() = default;

    [[nodiscard]] virtual bool isPending() const = 0;

    /// Ends the attempt that waits with what the browser came back with.
    virtual void finish(const QUrl& url) = 0;

    /// The browser that was opened for the attempt that has just succeeded, as far as it is known.
    /// Forgets it.
    [[nodiscard]] virtual std::optional<RunningApplication> takeBrowserApplication() = 0;
};

/// No attempt ever waits.
class NoPendingSignIn final : public PendingSignIn {
  public:
    [[nodiscard]] bool isPending() const override { return false; }
    void finish(const QUrl&) override {}
    [[nodiscard]] std::optional<RunningApplication> takeBrowserApplication() override { return {}; }
};

} // namespace vorq
