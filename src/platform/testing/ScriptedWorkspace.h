#pragma once

#include "platform/Workspace.h"

#include <map>
#include <vector>

namespace vorq {

/// Applications of one window each, brought to the front by hand.
class ScriptedWorkspace final : public Workspace {
  public:
    /// Adds a running application whose window has the number of its process. None is in front yet.
    void launch(const RunningApplication& application);

    /// Takes it and its window away. If it was in front, none is.
    void quit(ProcessId process);

    /// Brings an application to the front and tells of it.
    void bringToFront(ProcessId process);

    /// From now on a window that is asked to come to the front does not.
    void holdBackActivations() { m_holdsBack = true; }

    /// From now on no application can be hidden, for this reason.
    void forbidHiding(const QString& reason) { m_hiding = std::unexpected(reason); }
    /// The applications that were hidden, in order. Each went from the front.
    [[nodiscard]] const std::vector<ProcessId>& hidden() const { return m_hidden; }

    /// What the window of a process is called from now on.
    void entitle(ProcessId process, const QString& title) { m_titles[process] = title; }

    /// Leaves no application in front, and tells nothing.
    void bringNoneToFront() { m_frontmost.reset(); }

    /// From now on there may be applications that are not known.
    void forgetSome() { m_knowsAll = false; }
    /// Brings one that is not known to the front and tells of it.
    void bringUnknownToFront();

    [[nodiscard]] bool knowsAllApplications() const override { return m_knowsAll; }

    /// The windows that were asked to be activated, in order. Each has come to the front, too,
    /// unless that is held back.
    [[nodiscard]] const std::vector<WindowId>& activations() const { return m_activations; }

    [[nodiscard]] std::optional<ProcessId> frontmostProcess() const override { return m_frontmost; }
    [[nodiscard]] std::optional<WindowId> activeWindow() const override;
    [[nodiscard]] std::optional<RunningApplication> application(ProcessId process) const override;
    [[nodiscard]] std::vector<ProcessId> processesWithWindows() const override;
    [[nodiscard]] std::optional<ProcessId> processOf(WindowId window) const override;
    [[nodiscard]] std::optional<WindowId> windowOf(ProcessId process) const override;
    [[nodiscard]] QString titleOf(WindowId window) const override;
    void activate(WindowId window) override;
    PortSupport hide(ProcessId process) override;

  private:
    std::map<ProcessId, RunningApplication> m_applications;
    std::map<ProcessId, QString> m_titles;
    std::optional<ProcessId> m_frontmost;
    bool m_knowsAll = true;
    bool m_holdsBack = false;
    std::vector<WindowId> m_activations;
    PortSupport m_hiding;
    std::vector<ProcessId> m_hidden;
};

} // namespace vorq
