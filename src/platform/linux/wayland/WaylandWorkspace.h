#pragma once

#include "platform/linux/desktop/DesktopEntries.h"
#include "platform/linux/wayland/WaylandFrontmost.h"
#include "platform/linux/x11/X11Workspace.h"

#include <memory>
#include <stop_token>

namespace vorq {

class AtSpiBus;

/// The applications of a Wayland session. Which one is in front is known of those that show their
/// windows on the accessibility bus, and of Vorq itself; windows are those of the session's X
/// server, if it has one. Needs a QGuiApplication.
class WaylandWorkspace final : public Workspace {
  public:
    /// The clock must outlive the workspace.
    WaylandWorkspace(Clock& clock, std::shared_ptr<AtSpiBus> bus, QObject* parent = nullptr);
    ~WaylandWorkspace() override;

    [[nodiscard]] PortSupport supported() const override;
    [[nodiscard]] bool wasUsed() override { return m_x11.wasUsed(); }
    [[nodiscard]] bool knowsAllApplications() const override { return false; }
    [[nodiscard]] std::optional<ProcessId> frontmostProcess() const override;
    [[nodiscard]] std::optional<WindowId> activeWindow() const override;
    [[nodiscard]] std::optional<RunningApplication> application(ProcessId process) const override;
    [[nodiscard]] std::optional<ProcessId> processOf(WindowId window) const override;
    void activate(WindowId window) override;
    /// Of an application in a window of the session's X server.
    PortSupport hide(ProcessId process) override;

  private:
    void tell(ProcessId process);
    void learnFocus(ProcessId process) const;

    std::shared_ptr<AtSpiBus> m_bus;
    X11Workspace m_x11;
    WaylandFrontmost m_frontmost;
    mutable DesktopEntries m_desktopEntries;
    std::stop_source m_end;
};

} // namespace vorq
