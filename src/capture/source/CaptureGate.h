#pragma once

#include "capture/source/ExcludedApplications.h"
#include "platform/Accessibility.h"
#include "platform/Workspace.h"

#include <QString>

#include <optional>

namespace vorq {

/// Which applications a capture may ask, and what is known of them. Main thread only.
class CaptureGate {
  public:
    /// All must outlive the gate.
    CaptureGate(const Accessibility& accessibility, const Workspace& workspace, Defaults& settings)
        : m_accessibility(accessibility), m_workspace(workspace), m_excluded(settings) {}

    [[nodiscard]] bool isTrusted() const { return m_accessibility.isTrusted(); }

    /// Nothing if no application is in front, or Vorq itself.
    [[nodiscard]] std::optional<ProcessId> frontmostForeignProcess() const;

    /// What to ask for a source. Without one, whatever has the focus is asked; but while some
    /// applications must not be asked, it is not asked unseen: the application in front is.
    [[nodiscard]] std::optional<ProcessId> settled(std::optional<ProcessId> source) const;

    /// Whether a settled source may be asked, by any way. Nobody may without trust, where the user
    /// has excluded the application, or where an unknown one may be in front.
    [[nodiscard]] bool admits(std::optional<ProcessId> source) const;

    /// Whether a settled source is an application that the user has excluded.
    [[nodiscard]] bool excludes(std::optional<ProcessId> source) const;

    /// The name of a process's application, "" if it has none.
    [[nodiscard]] QString applicationName(ProcessId process) const;

    /// Of a process's application, "" for none.
    [[nodiscard]] QString identifierOf(std::optional<ProcessId> process) const;

    /// Without a source, of the application in front.
    [[nodiscard]] QString identifierOfSource(std::optional<ProcessId> source) const;

  private:
    const Accessibility& m_accessibility;
    const Workspace& m_workspace;
    ExcludedApplications m_excluded;
};

} // namespace vorq
