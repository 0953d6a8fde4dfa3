#pragma once

#include "platform/PortSupport.h"
#include "platform/ProcessId.h"
#include "platform/WindowId.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace vorq {

/// A running program that has windows.
struct RunningApplication {
    std::int32_t process = 0;
    /// The desktop-file id as far as it can be found, in the program's own case; "" if unknown.
    QString identifier;
    /// The name for people, "" if unknown.
    QString name;

    bool operator==(const RunningApplication&) const = default;
};

/// The applications and windows of the user's session. Main thread only.
///
/// Everything here is asked of the window system and answered at once, so an application that hangs
/// delays nothing.
class Workspace : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    /// Whether the applications of the session are known, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    /// Whether it is known of every application when it is in front. Where it is not, none being in
    /// front may mean one that is not known, and the one before is no guess at it.
    [[nodiscard]] virtual bool knowsAllApplications() const { return true; }

    /// The application in front, which may be Vorq itself. Nothing while none is.
    [[nodiscard]] virtual std::optional<ProcessId> frontmostProcess() const = 0;

    /// The window that has the focus, whoever owns it. Nothing while none has.
    [[nodiscard]] virtual std::optional<WindowId> activeWindow() const = 0;

    /// Nothing for a process that has no window or is gone.
    [[nodiscard]] virtual std::optional<RunningApplication>
    application(ProcessId process) const = 0;

    /// The processes that have windows, as far as they are known, each once.
    [[nodiscard]] virtual std::vector<ProcessId> processesWithWindows() const { return {}; }

    /// The process that owns a window; nothing if the window is gone.
    [[nodiscard]] virtual std::optional<ProcessId> processOf(WindowId window) const = 0;

    /// The window of a process that has the focus, else its topmost one. Nothing for one that has
    /// none, or where windows are not numbered.
    [[nodiscard]] virtual std::optional<WindowId> windowOf(ProcessId /*process*/) const {
        return std::nullopt;
    }

    /// What a window is called for people, "" for one that is gone or not known.
    [[nodiscard]] virtual QString titleOf(WindowId /*window*/) const { return {}; }

    /// Whether the user has pressed a key or a mouse button since this was made, in whatever
    /// program. False where it cannot be known.
    [[nodiscard]] virtual bool wasUsed() { return false; }

    /// Asks for a window to be given the focus; one that is gone is left alone.
    virtual void activate(WindowId window) = 0;

    /// Takes the application's window off the screen, that of windowOf(), so that what stands below
    /// it comes to view. The user brings it back as ever. The error is why it cannot be done here.
    virtual PortSupport hide(ProcessId process) = 0;

  signals:
    /// Another application, or another window, has come to the front. Vorq's own count as well. The
    /// window is 0 if the window system does not number it.
    void frontmostChanged(std::int32_t process, quint64 window);

    /// An application that is not known has come to the front, or there is none any more. Only
    /// where not all are known.
    void frontmostLost();
};

/// A session without applications.
class NoWorkspace final : public Workspace {
  public:
    [[nodiscard]] PortSupport supported() const override {
        return std::unexpected(QStringLiteral("There is no desktop that tells of applications."));
    }
    [[nodiscard]] std::optional<ProcessId> frontmostProcess() const override { return {}; }
    [[nodiscard]] std::optional<WindowId> activeWindow() const override { return {}; }
    [[nodiscard]] std::optional<RunningApplication> application(ProcessId) const override {
        return {};
    }
    [[nodiscard]] std::optional<ProcessId> processOf(WindowId) const override { return {}; }
    void activate(WindowId) override {}
    PortSupport hide(ProcessId) override { return supported(); }
};

} // namespace vorq
