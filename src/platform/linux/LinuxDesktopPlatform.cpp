#include "platform/linux/LinuxDesktopPlatform.h"

#include "platform/linux/LinuxPermissionProbe.h"
#include "platform/linux/LinuxPrivacySettings.h"
#include "platform/linux/LinuxSessionFacts.h"
#include "platform/linux/LinuxTrayHost.h"
#include "platform/linux/atspi/AtSpiAccessibility.h"
#include "platform/linux/atspi/AtSpiBus.h"
#include "platform/linux/desktop/DesktopEntries.h"
#include "platform/linux/desktop/GatewayHandoff.h"
#include "platform/linux/desktop/GraphicsProcessor.h"
#include "platform/linux/desktop/LinuxBackendAtLogin.h"
#include "platform/linux/desktop/LinuxDesktopLook.h"
#include "platform/linux/desktop/SystemClock.h"
#include "platform/linux/desktop/UrlScheme.h"
#include "platform/linux/desktop/XdgInstallation.h"
#include "platform/linux/desktop/XdgLoginItem.h"
#include "platform/linux/desktop/XdgPaths.h"
#include "platform/linux/desktop/XdgUrlOpener.h"
#include "platform/linux/documents/LinuxDocumentTools.h"
#include "platform/linux/notes/LinuxNotesBridge.h"
#include "platform/linux/wayland/WaylandWorkspace.h"
#include "platform/linux/x11/X11Compositor.h"
#include "platform/linux/x11/X11HotKeys.h"
#include "platform/linux/x11/X11OverlayHints.h"
#include "platform/linux/x11/X11PressMonitor.h"
#include "platform/linux/x11/X11PrimarySelection.h"
#include "platform/linux/x11/X11Screens.h"
#include "platform/linux/x11/X11Workspace.h"
#include "platform/linux/x11/copying/X11KeyPoster.h"
#include "platform/linux/x11/copying/X11Pasteboard.h"
#include "platform/linux/x11/pixels/X11ScreenCapture.h"
#include "platform/portable/PolledFrameStream.h"
#include "platform/portable/ProcessTestWindow.h"
#include "platform/portable/SettingsFile.h"
#include "platform/portable/ThreadedNotesBridge.h"
#include "support/async/OnPool.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QFile>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// The port, made by the function when it is first asked for.
template<typename Port, typename Make>
Port& madeOnce(std::unique_ptr<Port>& port, Make make) {
    if (!port) port = make();
    return *port;
}

// On an X server, of a Wayland session too, one form; without any session the null form.
template<typename OnX11, typename None, typename Port>
Port& ofSession(SessionKind session, std::unique_ptr<Port>& port) {
    return madeOnce(port, [session]() -> std::unique_ptr<Port> {
        if (session == SessionKind::None) return std::make_unique<None>();
        return std::make_unique<OnX11>();
    });
}

std::vector<PixelScreen> pixelScreens(const Screens& screens) {
    std::vector<PixelScreen> all;
    for (const Screen& screen : screens.screens()) {
        const QRectF points = screens.flipped(screen.frame);
        all.push_back(
            {.pixels = QRect(points.topLeft().toPoint(), (points.size() * screen.scale).toSize()),
             .scale = screen.scale});
    }
    return all;
}

// Beside the program, or where installed helpers are.
QString testWindowProgram() {
    const QString folder = QCoreApplication::applicationDirPath();
    QString beside = folder + u'/' + ProcessTestWindow::programName;
    if (QFile::exists(beside)) return beside;
    return folder + u"/../libexec/"_s + ProcessTestWindow::programName;
}

} // namespace

// Each stands below those that it uses.
struct LinuxDesktopPlatform::Parts {
    SystemClock clock;
    XdgPaths paths;
    std::unique_ptr<Defaults> defaults;
    std::unique_ptr<NotesBridge> notes;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<LocalSignIn> localSignIn;
    std::unique_ptr<Installation> installation;
    std::shared_ptr<AtSpiBus> accessibilityBus;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<UrlOpener> urls;
    std::unique_ptr<Screens> screens;
    std::unique_ptr<Compositor> compositor;
    std::unique_ptr<DesktopAppearance> appearance;
    std::unique_ptr<OverlayHints> overlayHints;
    std::unique_ptr<PressMonitor> presses;
    std::unique_ptr<TrayHost> tray;
    std::unique_ptr<GlobalHotKeys> hotKeys;
    std::unique_ptr<AtSpiAccessibility> accessibility;
    QObject screensObserver;
    std::unique_ptr<PrimarySelection> primarySelection;
    std::unique_ptr<Pasteboard> pasteboard;
    std::unique_ptr<KeyPoster> keyPoster;
    std::unique_ptr<ScreenCapture> screenCapture;
    std::unique_ptr<FrameStream> frameStream;
    std::unique_ptr<PermissionProbe> permissions;
    std::unique_ptr<PrivacySettings> privacySettings;
    std::unique_ptr<SessionFacts> sessionFacts;
    std::unique_ptr<TestWindow> testWindow;
    std::unique_ptr<Pasteboard> highlightContents;

    const std::shared_ptr<AtSpiBus>& bus() {
        if (!accessibilityBus)
            accessibilityBus = std::make_shared<AtSpiBus>(AtSpiAccessibility::defaultSessionBus());
        return accessibilityBus;
    }
};

LinuxDesktopPlatform::LinuxDesktopPlatform(SessionKind session)
    : m_session(session), m_parts(std::make_unique<Parts>()) {}

LinuxDesktopPlatform::~LinuxDesktopPlatform() = default;

Clock& LinuxDesktopPlatform::clock() {
    return m_parts->clock;
}

AppPaths& LinuxDesktopPlatform::paths() {
    return m_parts->paths;
}

Defaults& LinuxDesktopPlatform::defaults() {
    return madeOnce(m_parts->defaults, [this] {
        return std::make_unique<SettingsFile>(settingsPath(m_parts->paths));
    });
}

NotesBridge& LinuxDesktopPlatform::notes() {
    return madeOnce(m_parts->notes, [this] {
        return std::make_unique<ThreadedNotesBridge>(std::make_shared<LinuxNotesBridge>(
            LinuxNotesBridge::choice(defaults()), LinuxNotesBridge::folder(defaults()),
            QDBusConnection::sessionBus()));
    });
}

LoginItem& LinuxDesktopPlatform::loginItem() {
    return madeOnce(m_parts->loginItem, [this] {
        return std::make_unique<XdgLoginItem>(defaults(), configurationFolder(m_parts->paths),
                                              QCoreApplication::applicationFilePath());
    });
}

LocalSignIn& LinuxDesktopPlatform::localSignIn() {
    return madeOnce(m_parts->localSignIn,
                    [this] { return std::make_unique<GatewayHandoff>(m_parts->clock); });
}

const Installation& LinuxDesktopPlatform::installation() {
    return madeOnce(m_parts->installation, [this] {
        return std::make_unique<XdgInstallation>(QCoreApplication::applicationFilePath(),
                                                 XdgInstallation::dataFolders(m_parts->paths));
    });
}

std::shared_ptr<DocumentTools> LinuxDesktopPlatform::documentTools() {
    return std::make_shared<LinuxDocumentTools>(
        LinuxDocumentTools::Programs{.helper = LinuxDocumentTools::installedHelper()});
}

std::shared_ptr<BackendAtLogin> LinuxDesktopPlatform::makeBackendAtLogin(const QUrl& address) {
    return std::make_shared<LinuxBackendAtLogin>(LinuxBackendAtLogin::Setting{
        .configurationFolder = configurationFolder(m_parts->paths),
        .gateway = LinuxBackendAtLogin::findGateway(QCoreApplication::applicationFilePath()),
        .address = address});
}

Workspace& LinuxDesktopPlatform::workspace() {
    if (m_session != SessionKind::Wayland)
        return ofSession<X11Workspace, NoWorkspace>(m_session, m_parts->workspace);
    return madeOnce(m_parts->workspace, [this] {
        return std::make_unique<WaylandWorkspace>(m_parts->clock, m_parts->bus());
    });
}

UrlOpener& LinuxDesktopPlatform::urls() {
    return madeOnce(m_parts->urls,
                    [this] { return std::make_unique<XdgUrlOpener>(m_parts->clock, workspace()); });
}

// Qt has screens in every session.
Screens& LinuxDesktopPlatform::screens() {
    return madeOnce(m_parts->screens, [] { return std::make_unique<X11Screens>(); });
}

Compositor& LinuxDesktopPlatform::compositor() {
    return ofSession<X11Compositor, NoCompositor>(m_session, m_parts->compositor);
}

DesktopAppearance& LinuxDesktopPlatform::appearance() {
    return madeOnce(m_parts->appearance, [] { return std::make_unique<LinuxDesktopLook>(); });
}

OverlayHints& LinuxDesktopPlatform::overlayHints() {
    return ofSession<X11OverlayHints, NoOverlayHints>(m_session, m_parts->overlayHints);
}

PressMonitor& LinuxDesktopPlatform::presses() {
    return madeOnce(m_parts->presses, [this]() -> std::unique_ptr<PressMonitor> {
        if (m_session == SessionKind::None) return std::make_unique<NoPressMonitor>();
        return std::make_unique<X11PressMonitor>(screens());
    });
}

TrayHost& LinuxDesktopPlatform::tray() {
    return madeOnce(m_parts->tray, [this]() -> std::unique_ptr<TrayHost> {
        if (m_session == SessionKind::None) return std::make_unique<NoTrayHost>();
        return std::make_unique<LinuxTrayHost>(QDBusConnection::sessionBus());
    });
}

GlobalHotKeys& LinuxDesktopPlatform::hotKeys() {
    return ofSession<X11HotKeys, NoHotKeys>(m_session, m_parts->hotKeys);
}

template<typename Port>
void LinuxDesktopPlatform::followScreens(Port& port) {
    const Screens* all = &screens();
    const auto follow = [&port, all] { port.setScreens(pixelScreens(*all)); };
    QObject::connect(all, &Screens::changed, &m_parts->screensObserver, follow);
    follow();
}

Accessibility& LinuxDesktopPlatform::accessibility() {
    if (m_parts->accessibility) return *m_parts->accessibility;
    m_parts->accessibility = std::make_unique<AtSpiAccessibility>(m_parts->bus());
    followScreens(*m_parts->accessibility);
    return *m_parts->accessibility;
}

PrimarySelection& LinuxDesktopPlatform::primarySelection() {
    return ofSession<X11PrimarySelection, NoPrimarySelection>(m_session, m_parts->primarySelection);
}

// The X server of a Wayland session sees what is copied in its own windows alone, and presses keys
// for nobody else.
Pasteboard& LinuxDesktopPlatform::pasteboard() {
    if (m_session != SessionKind::Wayland)
        return ofSession<X11Pasteboard, NoPasteboard>(m_session, m_parts->pasteboard);
    return madeOnce(m_parts->pasteboard, [] {
        return std::make_unique<NoPasteboard>(
            u"Wayland lets a program read the clipboard only while it has the keyboard."_s);
    });
}

KeyPoster& LinuxDesktopPlatform::keyPoster() {
    if (m_session != SessionKind::Wayland)
        return ofSession<X11KeyPoster, NoKeyPoster>(m_session, m_parts->keyPoster);
    return madeOnce(m_parts->keyPoster, [] {
        return std::make_unique<NoKeyPoster>(u"Wayland lets no program press keys in another."_s);
    });
}

std::unique_ptr<ScreenCapture> LinuxDesktopPlatform::makeScreenCapture() {
    if (m_session == SessionKind::Wayland)
        return std::make_unique<NoScreenCapture>(
            u"Wayland shows no program the windows of another."_s);
    if (m_session == SessionKind::None)
        return std::make_unique<NoScreenCapture>(u"There is no desktop that shows windows."_s);
    auto capture = std::make_unique<X11ScreenCapture>();
    followScreens(*capture);
    return capture;
}

ScreenCapture& LinuxDesktopPlatform::screenCapture() {
    return madeOnce(m_parts->screenCapture, [this] { return makeScreenCapture(); });
}

FrameStream& LinuxDesktopPlatform::frameStream() {
    return madeOnce(m_parts->frameStream, [this]() -> std::unique_ptr<FrameStream> {
        std::unique_ptr<ScreenCapture> capture = makeScreenCapture();
        if (const PortSupport support = capture->supported(); !support)
            return std::make_unique<NoFrameStream>(support.error());
        return std::make_unique<PolledFrameStream>(m_parts->clock, std::move(capture));
    });
}

const PermissionProbe& LinuxDesktopPlatform::permissions() {
    return madeOnce(m_parts->permissions,
                    [this] { return std::make_unique<LinuxPermissionProbe>(accessibility()); });
}

std::unique_ptr<Accessibility> LinuxDesktopPlatform::makeAccessibility() {
    return std::make_unique<AtSpiAccessibility>(m_parts->bus());
}

PrivacySettings& LinuxDesktopPlatform::privacySettings() {
    return madeOnce(m_parts->privacySettings, [this]() -> std::unique_ptr<PrivacySettings> {
        if (m_session == SessionKind::None) return std::make_unique<NoPrivacySettings>();
        return std::make_unique<LinuxPrivacySettings>(m_parts->bus(), workspace());
    });
}

SessionFacts& LinuxDesktopPlatform::sessionFacts() {
    return madeOnce(m_parts->sessionFacts, [this]() -> std::unique_ptr<SessionFacts> {
        if (m_session == SessionKind::None) return std::make_unique<NoSessionFacts>();
        return std::make_unique<LinuxSessionFacts>(m_session, QDBusConnection::sessionBus());
    });
}

TestWindow& LinuxDesktopPlatform::testWindow() {
    return madeOnce(m_parts->testWindow, [this]() -> std::unique_ptr<TestWindow> {
        if (m_session == SessionKind::None) return std::make_unique<NoTestWindow>();
        return std::make_unique<ProcessTestWindow>(testWindowProgram());
    });
}

Pasteboard& LinuxDesktopPlatform::highlightContents() {
    return madeOnce(m_parts->highlightContents, [this]() -> std::unique_ptr<Pasteboard> {
        if (m_session == SessionKind::X11)
            return std::make_unique<X11Pasteboard>(X11Pasteboard::primary);
        return std::make_unique<NoPasteboard>(
            u"What is highlighted could not be given back in this session."_s);
    });
}

bool LinuxDesktopPlatform::hasGraphicsProcessor() const {
    return vorq::hasGraphicsProcessor();
}

void LinuxDesktopPlatform::registerUrlScheme() {
    const UrlScheme scheme(DesktopEntries::standardFolders(),
                           QCoreApplication::applicationFilePath());
    (void)onPool(
        [scheme] {
            if (scheme.ensureEntry()) UrlScheme::makeDefault();
        },
        {});
}

} // namespace vorq
