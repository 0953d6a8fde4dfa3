#pragma once

#include "app/desktop/DesktopParts.h"
#include "app/instance/ApplicationService.h"
#include "app/instance/CommandRepeats.h"
#include "backend/account/PendingSignIn.h"
#include "backend/http/CurlTransport.h"
#include "capture/selection/SelectionCapture.h"
#include "core/VorqAppState.h"
#include "platform/linux/desktop/LinuxDesktopLook.h"
#include "platform/linux/desktop/XdgLoginItem.h"
#include "platform/linux/desktop/XdgPaths.h"
#include "platform/linux/x11/X11HotKeys.h"
#include "platform/portable/SettingsFile.h"
#include "platform/portable/SystemClock.h"
#include "platform/portable/ThreadedNotesBridge.h"
#include "shell/application/AppDelegate.h"
#include "shell/application/ApplicationHost.h"
#include "shell/application/BackendAtLoginChoice.h"
#include "shell/look/ApplicationFont.h"
#include "shell/look/ApplicationPalette.h"
#include "shell/status/TrayStatusItem.h"

#include <QObject>

namespace vorq {

/// Vorq in the tray: puts the application state, the ports of the system and the shell together.
/// Needs a QApplication.
class DesktopProgram final : public QObject {
    Q_OBJECT

  public:
    /// The service, by which other starts of the program are heard, must outlive this object.
    explicit DesktopProgram(ApplicationService& service, DesktopParts parts = standardParts());
    ~DesktopProgram() override;

    /// Runs until the program ends and gives its exit status, which tells of a signal as a shell
    /// does. The source is that of the verb.
    int run(const DesktopArguments& arguments, const VerbSource& source);

    /// Whether the user has ended it to have it taken off the machine. That must wait until this
    /// object is gone.
    [[nodiscard]] bool isToBeDeleted() const;

  private:
    class Host;

    void perform(Verb verb, const VerbSource& source);
    [[nodiscard]] HotKeySource hotKeySource(const VerbSource& source) const;
    void registerUrlScheme();
    void tellOutcomes(LinkOutcomes& links);
    void applyDesktopLook();

    DesktopParts m_parts;
    SystemClock m_clock;
    XdgPaths m_paths;
    SettingsFile m_defaults{settingsPath(m_paths)};
    CurlTransport m_transport{m_clock};
    ThreadedNotesBridge m_noteBridge;
    std::unique_ptr<Workspace> m_workspace;
    X11HotKeys m_hotKeys;
    XdgLoginItem m_loginItem;
    NoPendingSignIn m_signIn;
    CommandRepeats m_repeats;
    std::unique_ptr<SelectionCapture> m_capture;
    std::unique_ptr<PermissionProbe> m_probe;
    VorqAppState m_state;
    std::unique_ptr<NoteCaptureFlow> m_notes;
    LinuxDesktopLook m_desktopLook;
    ApplicationPalette m_palette;
    ApplicationFont m_font;
    TrayStatusItem m_statusItem;
    std::unique_ptr<Host> m_host;
    AppDelegate m_delegate;
    BackendAtLoginChoice m_backend;
};

} // namespace vorq
