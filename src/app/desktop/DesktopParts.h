#pragma once

#include "areas/Permissions.h"
#include "capture/notes/NoteCaptureFlow.h"
#include "capture/selection/SelectionCapture.h"
#include "platform/Workspace.h"
#include "shell/window/PanelPresence.h"

#include <functional>
#include <memory>

class QObject;

namespace vorq {

class AppPaths;
class Clock;
class Defaults;
class LinuxDesktopLook;
class PanelHolds;
class ShellNotifications;
class VorqAppState;

/// What parts of the desktop program are made from. All of it outlives the parts.
struct CaptureContext {
    Clock& clock;
    AppPaths& paths;
    Workspace& workspace;
    Defaults& settings;
};

struct NotesContext {
    Clock& clock;
    AppPaths& paths;
    Workspace& workspace;
    SelectionCapture& capture;
    VorqAppState& state;
};

struct PanelContext {
    VorqAppState& state;
    Clock& clock;
    Defaults& defaults;
    Workspace& workspace;
    PanelHolds& holds;
    ShellNotifications& notifications;
    LinuxDesktopLook& desktopLook;
};

/// How the desktop program gets the parts that stand between it and the user's other programs.
struct DesktopParts {
    std::function<std::unique_ptr<Workspace>(Clock&)> makeWorkspace;
    std::function<std::unique_ptr<SelectionCapture>(const CaptureContext&)> makeCapture;
    /// Of the capture made last.
    std::function<std::unique_ptr<PermissionProbe>()> makeProbe;
    /// Lets programs show their windows to this one. The user has agreed.
    std::function<void()> enableTextCapture;
    /// Calls back when the capture made last may have come to be trusted, or not to be.
    std::function<void(QObject* context, std::function<void()>)> whenTrustChanges;
    std::function<std::unique_ptr<NoteCaptureFlow>(const NotesContext&)> makeNotes;
    std::function<std::unique_ptr<PanelPresence>(const PanelContext&)> makePanel;
};

/// The parts of this build.
[[nodiscard]] DesktopParts standardParts();

} // namespace vorq
