#pragma once

#include "capture/source/FrontmostTracker.h"

#include <optional>

namespace vorq {

/// Whether an application is a browser, by its identifier or its name.
[[nodiscard]] bool isLikelyBrowser(const RunningApplication& application);

/// Takes the browser out of the way once it has done its part in a sign-in, so that the user sees
/// what was in view before. Main thread only.
class DesktopReveal {
  public:
    /// The workspace must outlive this object.
    DesktopReveal(Workspace& workspace, FrontmostTracker::Self self)
        : m_workspace(workspace), m_self(std::move(self)) {}

    /// Hides the browser that was opened, or, where that is not known, the application in front if
    /// it is likely to be one. Gives whether something was hidden.
    bool revealDesktopAfterBrowserSignIn(const std::optional<RunningApplication>& opened);

  private:
    [[nodiscard]] bool isVorq(const RunningApplication& application) const;
    [[nodiscard]] std::optional<RunningApplication> browserInFront() const;

    Workspace& m_workspace;
    FrontmostTracker::Self m_self;
};

} // namespace vorq
