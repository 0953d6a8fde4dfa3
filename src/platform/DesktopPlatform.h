#pragma once

#include "platform/PortSupport.h"

#include <memory>

class QUrl;

namespace vorq {

class Accessibility;
class AppPaths;
class BackendAtLogin;
class Clock;
class Compositor;
class Defaults;
class DesktopAppearance;
class DocumentTools;
class FrameStream;
class GlobalHotKeys;
class Installation;
class KeyPoster;
class LocalSignIn;
class LoginItem;
class NotesBridge;
class OverlayHints;
class Pasteboard;
class PermissionProbe;
class PressMonitor;
class PrimarySelection;
class PrivacySettings;
class ScreenCapture;
class Screens;
class SessionFacts;
class TestWindow;
class TrayHost;
class UrlOpener;
class Workspace;

/// Gives the ports of the system that the program runs on, in the form that the session needs.
/// Each is made when it is first asked for and lives as long as the platform, which must go before
/// the application object. What the session lacks is a null form that says so. Main thread only.
class DesktopPlatform {
  public:
    DesktopPlatform() = default;
    DesktopPlatform(const DesktopPlatform&) = delete;
    DesktopPlatform& operator=(const DesktopPlatform&) = delete;
    virtual ~DesktopPlatform() = default;

    // For every program, with an application object of whatever kind.
    virtual Clock& clock() = 0;
    virtual AppPaths& paths() = 0;
    virtual Defaults& defaults() = 0;
    virtual NotesBridge& notes() = 0;
    virtual LoginItem& loginItem() = 0;
    virtual LocalSignIn& localSignIn() = 0;
    virtual const Installation& installation() = 0;

    /// For any number of threads. It may outlive the platform.
    [[nodiscard]] virtual std::shared_ptr<DocumentTools> documentTools() = 0;

    /// The backend on this computer, for the address where Vorq looks for one. It may outlive the
    /// platform.
    [[nodiscard]] virtual std::shared_ptr<BackendAtLogin>
    makeBackendAtLogin(const QUrl& address) = 0;

    // For programs with windows, which have a QGuiApplication.
    virtual Workspace& workspace() = 0;
    virtual UrlOpener& urls() = 0;
    virtual Screens& screens() = 0;
    virtual Compositor& compositor() = 0;
    virtual DesktopAppearance& appearance() = 0;
    virtual OverlayHints& overlayHints() = 0;
    virtual PressMonitor& presses() = 0;
    virtual TrayHost& tray() = 0;
    virtual GlobalHotKeys& hotKeys() = 0;
    virtual Accessibility& accessibility() = 0;
    virtual PrimarySelection& primarySelection() = 0;
    virtual ScreenCapture& screenCapture() = 0;
    virtual FrameStream& frameStream() = 0;
    virtual Pasteboard& pasteboard() = 0;
    virtual KeyPoster& keyPoster() = 0;
    virtual const PermissionProbe& permissions() = 0;

    /// One more, for a thread beside the one that reads what the user highlights. Without places.
    [[nodiscard]] virtual std::unique_ptr<Accessibility> makeAccessibility() = 0;

    virtual PrivacySettings& privacySettings() = 0;
    virtual SessionFacts& sessionFacts() = 0;
    virtual TestWindow& testWindow() = 0;

    /// What is highlighted, as a clipboard that can be lent and given back.
    virtual Pasteboard& highlightContents() = 0;

    /// Whether there is a graphics processor that this user may draw with.
    [[nodiscard]] virtual bool hasGraphicsProcessor() const = 0;

    /// Has links of Vorq's own scheme opened by this program, unless its installation has seen to
    /// that. Failures are silent.
    virtual void registerUrlScheme() = 0;
};

} // namespace vorq
