#include "app/desktop/DesktopProgram.h"

#include "app/cli/SettleSession.h"
#include "app/cli/UnixSignals.h"
#include "app/desktop/LocalBackend.h"
#include "platform/linux/desktop/DesktopEntries.h"
#include "platform/linux/desktop/UrlScheme.h"
#include "platform/linux/notes/LinuxNotesBridge.h"
#include "platform/linux/x11/X11InputWatch.h"
#include "shell/dialogs/AlertBox.h"
#include "shell/look/StatusGlyphs.h"
#include "shell/look/TextScale.h"
#include "support/async/OnPool.h"

#include <QApplication>

#include <algorithm>
#include <utility>

namespace vorq {

using namespace std::chrono_literals;

namespace {

constexpr int signalExitBase = 128;
constexpr Clock::Duration settleLimit = 300ms;

} // namespace

class DesktopProgram::Host final : public ApplicationHost {
  public:
    void becomeAccessory() override { QGuiApplication::setQuitOnLastWindowClosed(false); }

    void installApplicationIcon() override {
        QGuiApplication::setWindowIcon(statusIcon(StatusImage::Glyph));
    }

    [[nodiscard]] bool isActive() const override {
        return QGuiApplication::applicationState() == Qt::ApplicationActive;
    }

    [[nodiscard]] bool isUserBusy() override { return m_input.wasUsed(); }

    void show(const Alert& alert, std::function<void(qsizetype)> chosen) override {
        m_alerts.show(alert, std::move(chosen));
    }

    void terminate() override { QCoreApplication::quit(); }

    void terminateAndDelete() override {
        m_isToBeDeleted = true;
        terminate();
    }

    [[nodiscard]] bool isToBeDeleted() const { return m_isToBeDeleted; }

  private:
    bool m_isToBeDeleted = false;
    AlertBox m_alerts;
    X11InputWatch m_input;
};

DesktopProgram::DesktopProgram(ApplicationService& service, DesktopParts parts)
    : m_parts(std::move(parts)),
      m_noteBridge(std::make_shared<LinuxNotesBridge>(LinuxNotesBridge::choice(m_defaults),
                                                      LinuxNotesBridge::folder(m_defaults),
                                                      QDBusConnection::sessionBus())),
      m_workspace(m_parts.makeWorkspace(m_clock)),
      m_loginItem(m_defaults, configurationFolder(m_paths),
                  QCoreApplication::applicationFilePath()),
      m_capture(m_parts.makeCapture({m_clock, m_paths, *m_workspace, m_defaults})),
      m_probe(m_parts.makeProbe()),
      m_state({m_clock, m_defaults, m_paths, m_transport, *m_capture, m_noteBridge}),
      m_notes(m_parts.makeNotes({m_clock, m_paths, *m_workspace, *m_capture, m_state})),
      m_palette(m_state.appearance()),
      m_statusItem(m_clock),
      m_host(std::make_unique<Host>()),
      m_delegate(
          {*m_host,
           m_clock,
           *m_workspace,
           m_hotKeys,
           m_loginItem,
           *m_capture,
           *m_notes,
           m_signIn,
           m_statusItem,
           [this](VorqAppState& state) {
               return m_parts.makePanel({state, m_clock, m_defaults, *m_workspace,
                                         m_delegate.holds(), m_delegate.notifications(),
                                         m_desktopLook});
           },
           {static_cast<ProcessId>(QCoreApplication::applicationPid()), ApplicationService::name},
           [this] { m_parts.enableTextCapture(); }}),
      m_backend(localBackend(m_paths), m_statusItem,
                [this](const Alert& alert) { m_delegate.showAlert(alert); }) {
    connect(&service, &ApplicationService::activated, &m_delegate,
            &AppDelegate::applicationShouldHandleReopen);
    connect(&service, &ApplicationService::openRequested, &m_delegate,
            &AppDelegate::applicationOpen);
    connect(&service, &ApplicationService::verbRequested, this, &DesktopProgram::perform);
    tellOutcomes(service.links());
    connect(&m_desktopLook, &LinuxDesktopLook::changed, &m_palette, [this] { applyDesktopLook(); });
}

DesktopProgram::~DesktopProgram() = default;

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
    m_state.permissions().setProbe(m_probe.get());
    m_delegate.bindAppState(m_state);
    m_parts.whenTrustChanges(&m_delegate, [this] { m_delegate.refreshPermissions(); });
    m_delegate.refreshPermissions();
    if (!arguments.url.isEmpty()) m_delegate.applicationOpen({QUrl(arguments.url)});
    perform(arguments.verb, source);
    registerUrlScheme();
    const int status = QCoreApplication::exec();
    m_delegate.applicationWillTerminate();
    m_state.finishLibrary();
    settleSession(m_state.account().tokens(), m_clock, settleLimit);
    return status;
}

void DesktopProgram::tellOutcomes(LinkOutcomes& links) {
    connect(&m_delegate.notifications(), &ShellNotifications::vorqMacHandoffCode, &links,
            &LinkOutcomes::began);
    connect(&m_state.signIn(), &AccountSignIn::macHandoffEnded, &links,
            [this, &links](const QString& code, const QString& failure) {
                const QString name = m_state.account().profile().displayName();
                const QString sentence =
                    failure.isEmpty() ? QStringLiteral("Signed in as %1.").arg(name) : failure;
                links.ended(code, failure.isEmpty(), sentence);
            });
}

void DesktopProgram::perform(Verb verb, const VerbSource& source) {
    const Clock::Duration now = m_clock.now();
    if (m_repeats.isRepetition(verb, std::min(source.given.value_or(now), now))) return;
    switch (verb) {
    case Verb::Launch:
        return;
    case Verb::Summon:
        return m_delegate.perform(HotKeyAction::Panel, hotKeySource(source));
    case Verb::Note:
        return m_delegate.perform(HotKeyAction::SaveNote, hotKeySource(source));
    case Verb::PushNote:
        return m_delegate.perform(HotKeyAction::PushNote, hotKeySource(source));
    case Verb::Clear:
        return m_delegate.perform(HotKeyAction::ClearChat, hotKeySource(source));
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
    if (!result.process) result.process = m_workspace->frontmostProcess();
    const auto application =
        result.process ? m_workspace->application(*result.process) : std::nullopt;
    if (application) result.bundleIdentifier = application->identifier;
    return result;
}

void DesktopProgram::applyDesktopLook() {
    const DesktopLook look = m_desktopLook.look();
    m_palette.setDesktop(look);
    m_font.setTextScale(
        remainingTextScale(look.textScale.value_or(1), qGuiApp->devicePixelRatio()));
}

void DesktopProgram::registerUrlScheme() {
    const UrlScheme scheme(DesktopEntries::standardFolders(),
                           QCoreApplication::applicationFilePath());
    (void)onPool(
        [scheme] {
            if (scheme.ensureEntry()) UrlScheme::makeDefault();
        },
        {});
}

} // namespace vorq
