#pragma once

#include "platform/DesktopPlatform.h"
#include "platform/linux/desktop/SessionKind.h"

namespace vorq {

/// The ports of a Linux session: of the X server, of Wayland, or null forms where there is neither.
/// In a Wayland session those of its X server reach as far as that does.
class LinuxDesktopPlatform final : public DesktopPlatform {
  public:
    explicit LinuxDesktopPlatform(SessionKind session = sessionKind());
    ~LinuxDesktopPlatform() override;

    Clock& clock() override;
    AppPaths& paths() override;
    Defaults& defaults() override;
    NotesBridge& notes() override;
    LoginItem& loginItem() override;
    LocalSignIn& localSignIn() override;
    const Installation& installation() override;
    [[nodiscard]] std::shared_ptr<DocumentTools> documentTools() override;
    [[nodiscard]] std::shared_ptr<BackendAtLogin> makeBackendAtLogin(const QUrl& address) override;

    Workspace& workspace() override;
    UrlOpener& urls() override;
    Screens& screens() override;
    Compositor& compositor() override;
    DesktopAppearance& appearance() override;
    OverlayHints& overlayHints() override;
    PressMonitor& presses() override;
    TrayHost& tray() override;
    GlobalHotKeys& hotKeys() override;
    Accessibility& accessibility() override;
    PrimarySelection& primarySelection() override;
    ScreenCapture& screenCapture() override;
    FrameStream& frameStream() override;
    Pasteboard& pasteboard() override;
    KeyPoster& keyPoster() override;
    const PermissionProbe& permissions() override;
    [[nodiscard]] std::unique_ptr<Accessibility> makeAccessibility() override;
    PrivacySettings& privacySettings() override;
    SessionFacts& sessionFacts() override;
    TestWindow& testWindow() override;
    Pasteboard& highlightContents() override;
    [[nodiscard]] bool hasGraphicsProcessor() const override;
    void registerUrlScheme() override;

  private:
    struct Parts;

    // Keeps a port that has places in points up to date with the monitors.
    template<typename Port>
    void followScreens(Port& port);

    /// One more that a thread of its own may use.
    [[nodiscard]] std::unique_ptr<ScreenCapture> makeScreenCapture();

    SessionKind m_session;
    std::unique_ptr<Parts> m_parts;
};

} // namespace vorq
