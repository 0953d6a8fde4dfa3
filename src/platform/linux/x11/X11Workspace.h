#pragma once

#include "platform/Workspace.h"
#include "platform/linux/desktop/DesktopEntries.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11InputWatch.h"

#include <QSocketNotifier>

#include <memory>

namespace vorq {

/// The applications of an X11 session, by what its window manager tells. Without an X server, or
/// without a window manager, there are none.
class X11Workspace final : public Workspace {
  public:
    explicit X11Workspace(QObject* parent = nullptr);
    ~X11Workspace() override;

    [[nodiscard]] PortSupport supported() const override;
    [[nodiscard]] bool wasUsed() override { return m_input.wasUsed(); }
    [[nodiscard]] std::optional<ProcessId> frontmostProcess() const override;
    [[nodiscard]] std::optional<WindowId> activeWindow() const override;
    [[nodiscard]] std::optional<RunningApplication> application(ProcessId process) const override;
    [[nodiscard]] std::vector<ProcessId> processesWithWindows() const override;
    [[nodiscard]] std::optional<ProcessId> processOf(WindowId window) const override;
    [[nodiscard]] std::optional<WindowId> windowOf(ProcessId process) const override;
    [[nodiscard]] QString titleOf(WindowId window) const override;
    void activate(WindowId window) override;
    PortSupport hide(ProcessId process) override;

  private:
    using Window = X11Connection::Window;

    void watchActiveWindow();
    void takeEvents();
    void noticeActiveWindow();
    [[nodiscard]] QString windowClass(Window window) const;
    void askManager(Window window, X11Connection::Atom wish, std::uint32_t first,
                    std::uint32_t second) const;

    // Waiting for an answer would swallow events on the same connection.
    X11Connection m_events;
    X11Connection m_requests;
    X11Connection::Atom m_activeWindowAtom = 0;
    X11Connection::Atom m_clientListAtom = 0;
    X11Connection::Atom m_applicationIdAtom = 0;
    X11Connection::Atom m_classAtom = 0;
    std::unique_ptr<QSocketNotifier> m_notifier;
    Window m_lastActive = 0;
    X11InputWatch m_input;
    mutable DesktopEntries m_desktopEntries;
};

} // namespace vorq
