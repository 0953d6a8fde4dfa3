#include "app/desktop/DesktopProgram.h"

#include "app/cli/SettleSession.h"
#include "app/cli/UnixSignals.h"
#include "app/desktop/DesktopPanel.h"
#include "app/desktop/LocalBackend.h"
#include "app/desktop/PanelRenderer.h"
#include "app/desktop/SessionLimits.h"
#include "backend/account/TcpLoopbackServer.h"
#include "platform/Accessibility.h"
#include "platform/DesktopLook.h"
#include "platform/Installation.h"
#include "platform/LoginItem.h"
#include "platform/NotesBridge.h"
#include "platform/Workspace.h"
#include "platform/pixels/FrameStream.h"
#include "shell/dialogs/AlertBox.h"
#include "shell/look/StatusGlyphs.h"
#include "shell/look/TextScale.h"
#include "shell/window/DeferredPanel.h"
#include "ui/bindings/UiContext.h"

#include <QApplication>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {

using namespace std::chrono_literals;

namespace {

constexpr int signalExitBase = 128;
constexpr Clock::Duration settleLimit = 300ms;

} // namespace

class DesktopProgram::Host final : public ApplicationHost {
  public:
    /// The function ends the program once the user has agreed.
    Host(Workspace& workspace, std::function<void()> quit)
        : m_workspace(workspace), m_quit(std::move(quit)) {}

    void becomeAccessory() override { QGuiApplication::setQuitOnLastWindowClosed(false); }

    void installApplicationIcon() override {
        QGuiApplication::setWindowIcon(statusIcon(StatusImage::Glyph));
    }

    [[nodiscard]] bool isActive() const override {
        return QGuiApplication::applicationState() == Qt::ApplicationActive;
    }

    [[nodiscard]] bool isUserBusy() override { return m_workspace.wasUsed(); }

    void show(const Alert& alert, std::function<void(qsizetype)> chosen) override {
        m_alerts.show(alert, std::move(chosen));
    }

    void terminate() override { m_quit(); }

    void terminateAndDelete() override {
        m_isToBeDeleted = true;
        QCoreApplication::quit();
    }

    [[nodiscard]] bool isToBeDeleted() const { return m_isToBeDeleted; }

  private:
    bool m_isToBeDeleted = false;
    AlertBox m_alerts;
    Workspace& m_workspace;
    std::function<void()> m_quit;
};

DesktopProgram::DesktopProgram(ApplicationService& service, DesktopPlatform& platform)
    : m_platform(platform),
      m_transport(platform.clock()),
      m_capture(platform, m_showings),
      m_attachmentReader(platform.documentTools()),
      m_notes({m_capture.notes(), m_capture.snapshots(), m_capture.gate(), m_capture.captureLog(),
               platform.notes(), ApplicationService::name}),
      m_state({platform.clock(), platform.defaults(), platform.paths(), m_transport, m_capture,
               platform.notes()}),
      m_signIn(signInPorts()),
      m_settingsDamage(platform.defaults(), m_state.panel()),
      m_palette(m_state.appearance()),
      m_statusItem(platform.clock(), platform.tray()),
      m_host(std::make_unique<Host>(platform.workspace(), [this] { quit(); })),
      m_delegate(delegatePorts()),
      m_backend(localBackend(platform), m_statusItem,
                [this](const Alert& alert) { m_delegate.showAlert(alert); }),
      m_watch({platform.clock(), platform.workspace(), platform.frameStream(), m_capture.reader(),
               m_capture.gate(), static_cast<ProcessId>(QCoreApplication::applicationPid())}) {
    chooseRenderer(platform.hasGraphicsProcessor());
    prepareUi();
    connect(&service, &ApplicationService::activated, &m_delegate,
            &AppDelegate::applicationShouldHandleReopen);
    connect(&service, &ApplicationService::openRequested, &m_delegate,
            &AppDelegate::applicationOpen);
    connect(&service, &ApplicationService::verbRequested, this, &DesktopProgram::perform);
    m_state.signIn().setBrowserSignIn(&m_signIn);
    tellOutcomes(service.links());
    service.previewSwitches().serve(m_state.previews());
    service.selfTests().serve(
        *this, [this]() -> SelfTest& { return selfTest(); },
        [this] { return m_selfTest->secrets(); });
    connectNotes();
    connect(&m_state.permissions(), &Permissions::changed, this,
            &DesktopProgram::followPermissions);
    connect(&m_delegate.notifications(), &ShellNotifications::vorqOpenSettings, this,
            &DesktopProgram::showSettings);
    connect(&m_statusItem, &StatusItem::menuWillOpen, this,
            [this] { m_statusItem.setSessionLimits(sessionLimits(m_platform)); });
    connect(&platform.appearance(), &DesktopAppearance::changed, &m_palette,
            [this] { applyDesktopLook(); });
}

DesktopProgram::~DesktopProgram() = default;

VorqGoogleSignIn::Ports DesktopProgram::signInPorts() {
    return {m_state.api(), m_platform.clock(), m_platform.urls(),
            [this] { return std::make_unique<TcpLoopbackServer>(m_platform.clock()); },
            ApplicationService::name};
}

AppDelegate::Ports DesktopProgram::delegatePorts() {
    return {*m_host,
            m_platform.clock(),
            m_platform.defaults(),
            m_platform.workspace(),
            m_platform.hotKeys(),
            m_platform.loginItem(),
            m_capture,
            m_notes,
            m_signIn,
            m_statusItem,
            [this](VorqAppState& state) { return makePanel(state); },
            {static_cast<ProcessId>(QCoreApplication::applicationPid()), ApplicationService::name},
            [this] { turnAccessibilityOn(); },
            m_platform.installation().isInstalled()};
}

std::unique_ptr<PanelPresence> DesktopProgram::makePanel(VorqAppState& state) {
    const PanelContext context{
        m_platform, state, m_attachmentReader, m_delegate.holds(), m_delegate.notifications(),
        m_showings};
    return std::make_unique<DeferredPanel>(
        m_platform.clock(), [context] { return std::make_unique<DesktopPanel>(context); });
}

bool DesktopProgram::isToBeDeleted() const {
    return m_host->isToBeDeleted();
}

int DesktopProgram::run(const DesktopArguments& arguments, const VerbSource& source) {
    UnixSignals unixSignals;
    connect(&unixSignals, &UnixSignals::received, this,
            [](int number) { QCoreApplication::exit(signalExitBase + number); });
    const bool hasErrand = arguments.verb != Verb::Launch || !arguments.url.isEmpty();
    m_delegate.applicationDidFinishLaunching({.background = arguments.background || hasErrand,
                                              .launchedAtLogin = arguments.launchedAtLogin});
    m_state.permissions().setProbe(&m_platform.permissions());
    m_state.permissions().setPrivacySettings(&m_platform.privacySettings());
    m_delegate.bindAppState(m_state);
    m_platform.accessibility().whenTrustChanges(&m_delegate,
                                                [this] { m_delegate.refreshPermissions(); });
    m_delegate.refreshPermissions();
    openPreviews(arguments.previews);
    if (!arguments.url.isEmpty()) m_delegate.applicationOpen({QUrl(arguments.url)});
    perform(arguments.verb, source);
    if (!arguments.background && !arguments.launchedAtLogin && !hasErrand)
        walkthrough().offerInFirstRun();
    m_platform.registerUrlScheme();
    const int status = QCoreApplication::exec();
    m_delegate.applicationWillTerminate();
    if (m_selfTest) m_selfTest->end();
    m_signIn.cancelPending();
    m_state.finishLibrary();
    settleSession(m_state.account().tokens(), m_platform.clock(), settleLimit);
    return status;
}

void DesktopProgram::tellOutcomes(LinkOutcomes& links) {
    connect(&m_delegate.notifications(), &ShellNotifications::vorqMacHandoffCode, &links,
            &LinkOutcomes::began);
    connect(&m_state.signIn(), &AccountSignIn::macHandoffEnded, &links,
            [this, &links](const QString& code, const QString& failure) {
                const QString name = m_state.account().profile().displayName();
                const QString sentence =
                    failure.isEmpty() ? u"Signed in as %1."_s.arg(name) : failure;
                links.ended(code, failure.isEmpty(), sentence);
            });
}

// What was saved as a note counts as highlighted text, as any other that was captured. The message
// is for the pages of the library, which is not read from its files for it.
void DesktopProgram::connectNotes() {
    connect(&m_notes, &NoteDraftFlow::captured, &m_state.panel(),
            &PanelConversation::setHighlightedText);
    connect(&m_notes, &NoteDraftFlow::libraryMessageChanged, this, [this](const QString& message) {
        if (m_state.isLibraryLoaded()) m_state.library().setLibraryMessage(message);
    });
}

// It listens to what is highlighted anywhere, which nobody needs who does not test.
SelfTest& DesktopProgram::selfTest() {
    if (!m_selfTest)
        m_selfTest = std::make_unique<DesktopSelfTest>(
            DesktopSelfTest::Parts{.platform = m_platform,
                                   .capture = m_capture,
                                   .state = m_state,
                                   .hotKeys = m_delegate.hotKeys()});
    return m_selfTest->test();
}

DesktopWalkthrough& DesktopProgram::walkthrough() {
    if (!m_walkthrough)
        m_walkthrough = std::make_unique<DesktopWalkthrough>(
            WalkthroughContext{m_platform, m_state, [this]() -> SelfTest& { return selfTest(); }});
    return *m_walkthrough;
}

void DesktopProgram::followPermissions() {
    if (m_state.permissions().showAccessibilityWalkthrough()) (void)walkthrough();
}

// The panel would stand over the window.
void DesktopProgram::showSettings() {
    emit m_delegate.notifications().vorqHidePanel();
    if (!m_settings) makeSettings();
    m_settings->show();
}

void DesktopProgram::makeSettings() {
    m_settings = std::make_unique<DesktopSettings>(
        SettingsContext{m_platform, m_state, m_delegate.holds(),
                        [this] { m_delegate.performCommand(StatusCommand::OpenAccessibility); },
                        [this] { showSelfTest(); }});
    connect(m_settings.get(), &DesktopSettings::quitAllowed, qApp, &QCoreApplication::quit);
}

// What the user is entering would be lost.
void DesktopProgram::quit() {
    if (m_settings)
        m_settings->requestQuit();
    else
        QCoreApplication::quit();
}

// The walkthrough says which programs are to be started again for it.
void DesktopProgram::turnAccessibilityOn() {
    emit m_delegate.notifications().vorqHidePanel();
    walkthrough().turnAccessibilityOn();
}

void DesktopProgram::showSelfTest() {
    emit m_delegate.notifications().vorqHidePanel();
    walkthrough().askForSelfTest();
}

void DesktopProgram::runSelfTest() {
    emit m_delegate.notifications().vorqHidePanel();
    walkthrough().runSelfTest();
}

void DesktopProgram::openPreviews(const QList<Preview>& previews) {
    for (const Preview preview : previews)
        m_state.previews().openForThisRun(preview);
    m_watchSwitch = std::make_unique<WatchSwitch>(
        WatchSwitch::Services{m_state.previews(), m_watch, m_statusItem, m_capture.captureLog()});
    m_writing = std::make_unique<DesktopWriting>(DesktopWriting::Parts{
        m_platform, m_capture, m_state, m_delegate.hotKeys(), [this] { m_delegate.showPanel(); },
        [this] { m_delegate.tellFailure(); }});
    connect(&m_delegate, &AppDelegate::rewriteRequested, m_writing.get(), &DesktopWriting::rewrite);
}

void DesktopProgram::perform(Verb verb, const VerbSource& source) {
    // To bring a window forward again and again does no harm.
    if (verb == Verb::Settings) return showSettings();
    if (verb == Verb::Doctor) return runSelfTest();
    const Clock::Duration now = m_platform.clock().now();
    if (m_repeats.isRepetition(verb, std::min(source.given.value_or(now), now))) return;
    switch (verb) {
    case Verb::Launch:
    case Verb::Settings:
    case Verb::Doctor:
        return;
    case Verb::Summon:
        return m_delegate.perform(HotKeyAction::Panel, hotKeySource(source));
    case Verb::Note:
        return m_delegate.perform(HotKeyAction::SaveNote, hotKeySource(source));
    case Verb::PushNote:
        return m_delegate.perform(HotKeyAction::PushNote, hotKeySource(source));
    case Verb::Clear:
        return m_delegate.perform(HotKeyAction::ClearChat, hotKeySource(source));
    case Verb::Rewrite:
        return m_delegate.perform(HotKeyAction::Rewrite, hotKeySource(source));
    case Verb::Toggle:
        return m_delegate.togglePanel();
    case Verb::SaveChat:
        return m_delegate.saveChatToNotes();
    case Verb::Quit:
        return m_host->terminate();
    }
}

HotKeySource DesktopProgram::hotKeySource(const VerbSource& source) const {
    HotKeySource result{.process = source.process, .bundleIdentifier = {}};
    if (!result.process) result.process = m_platform.workspace().frontmostProcess();
    const auto application =
        result.process ? m_platform.workspace().application(*result.process) : std::nullopt;
    if (application) result.bundleIdentifier = application->identifier;
    return result;
}

void DesktopProgram::applyDesktopLook() {
    const DesktopLook look = m_platform.appearance().look();
    m_palette.setDesktop(look);
    m_statusItem.setReducesMotion(!look.allowsAnimations.value_or(true));
    m_font.setTextScale(
        remainingTextScale(look.textScale.value_or(1), qGuiApp->devicePixelRatio()));
}

} // namespace vorq
