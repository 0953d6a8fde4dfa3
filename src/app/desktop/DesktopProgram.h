#pragma once

#include "app/desktop/DesktopCapture.h"
#include "app/desktop/DesktopSelfTest.h"
#include "app/desktop/DesktopSettings.h"
#include "app/desktop/DesktopWalkthrough.h"
#include "app/desktop/DesktopWriting.h"
#include "app/desktop/SettingsDamage.h"
#include "app/instance/ApplicationService.h"
#include "app/instance/CommandRepeats.h"
#include "backend/account/VorqGoogleSignIn.h"
#include "backend/http/CurlTransport.h"
#include "capture/attachments/FileAttachmentReader.h"
#include "capture/notes/NoteDraftFlow.h"
#include "capture/watch/FrontmostWatchService.h"
#include "core/VorqAppState.h"
#include "platform/DesktopPlatform.h"
#include "shell/application/AppDelegate.h"
#include "shell/application/ApplicationHost.h"
#include "shell/application/BackendAtLoginChoice.h"
#include "shell/application/WatchSwitch.h"
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
    /// The service, by which other starts of the program are heard, and the platform must outlive
    /// this object.
    DesktopProgram(ApplicationService& service, DesktopPlatform& platform);
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
    [[nodiscard]] std::unique_ptr<PanelPresence> makePanel(VorqAppState& state);
    [[nodiscard]] VorqGoogleSignIn::Ports signInPorts();
    [[nodiscard]] AppDelegate::Ports delegatePorts();
    void tellOutcomes(LinkOutcomes& links);
    void connectNotes();
    [[nodiscard]] SelfTest& selfTest();
    [[nodiscard]] DesktopWalkthrough& walkthrough();
    void followPermissions();
    void makeSettings();
    void showSettings();
    void quit();
    void turnAccessibilityOn();
    void showSelfTest();
    void runSelfTest();
    void openPreviews(const QList<Preview>& previews);
    void applyDesktopLook();

    DesktopPlatform& m_platform;
    CurlTransport m_transport;
    CommandRepeats m_repeats;
    PanelShowings m_showings;
    DesktopCapture m_capture;
    FileAttachmentReader m_attachmentReader;
    NoteDraftFlow m_notes;
    VorqAppState m_state;
    VorqGoogleSignIn m_signIn;
    SettingsDamage m_settingsDamage;
    ApplicationPalette m_palette;
    ApplicationFont m_font;
    TrayStatusItem m_statusItem;
    std::unique_ptr<Host> m_host;
    AppDelegate m_delegate;
    std::unique_ptr<DesktopSelfTest> m_selfTest;
    BackendAtLoginChoice m_backend;
    FrontmostWatchService m_watch;
    std::unique_ptr<WatchSwitch> m_watchSwitch;
    std::unique_ptr<DesktopWriting> m_writing;
    std::unique_ptr<DesktopSettings> m_settings;       // null until they are first shown
    std::unique_ptr<DesktopWalkthrough> m_walkthrough; // the same
};

} // namespace vorq
