#include "app/desktop/DesktopWalkthrough.h"

#include "core/VorqAppState.h"
#include "platform/Compositor.h"
#include "platform/DesktopLook.h"
#include "platform/trust/PrivacySettings.h"
#include "shell/look/TextScale.h"
#include "shell/notices/ShellLog.h"

#include <QGuiApplication>
#include <QQmlError>
#include <QQuickItem>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {

using Keyboard = WalkthroughWindow::Keyboard;

DesktopWalkthrough::Shown::Shown(const WalkthroughWindow::Platform& platform, UiContext& context)
    : window(platform, &engine) {
    context.install(engine);
    window.setSource(QUrl(u"qrc:/qt/qml/Vorq/walkthrough/WalkthroughView.qml"_s));
    for (const QQmlError& error : window.errors())
        qCCritical(shellLog, "Vorq: the walkthrough does not load: %s",
                   qUtf8Printable(error.toString()));
}

// The pages go before what they read.
DesktopWalkthrough::Shown::~Shown() {
    window.setSource({});
}

DesktopWalkthrough::DesktopWalkthrough(const WalkthroughContext& context)
    : m_context(context),
      m_view({.clock = context.platform.clock(),
              .defaults = context.platform.defaults(),
              .permissions = context.state.permissions(),
              .privacy = context.platform.privacySettings(),
              .selfTest = context.selfTest,
              .applicationName = QGuiApplication::applicationDisplayName()}),
      m_look(context.state.appearance(), PanelLook::Surface::Window),
      m_ui(m_view, m_look) {
    connect(&context.state.permissions(), &Permissions::changed, this, &DesktopWalkthrough::follow);
    connect(&context.platform.appearance(), &DesktopAppearance::changed, this,
            &DesktopWalkthrough::takeLook);
    connect(&context.platform.compositor(), &Compositor::changed, this,
            &DesktopWalkthrough::takeLook);
    takeLook();
    follow();
}

DesktopWalkthrough::~DesktopWalkthrough() = default;

void DesktopWalkthrough::ask() {
    m_keyboard = Keyboard::Takes;
    if (m_shown)
        m_shown->window.present(m_keyboard);
    else
        m_context.state.permissions().openAccessibilityWalkthrough();
    m_keyboard = Keyboard::Leaves;
}

void DesktopWalkthrough::turnAccessibilityOn() {
    ask();
    m_view.begin();
    m_view.openSystemSettings();
}

void DesktopWalkthrough::askForSelfTest() {
    m_startsWithTest = true;
    ask();
    m_startsWithTest = false;
    m_view.showSelfTest();
}

void DesktopWalkthrough::runSelfTest() {
    askForSelfTest();
    m_view.selfTest()->start();
}

void DesktopWalkthrough::follow() {
    const bool isWanted = m_context.state.permissions().showAccessibilityWalkthrough();
    if (isWanted == (m_shown != nullptr)) return;
    if (isWanted)
        make();
    else
        dismiss();
}

void DesktopWalkthrough::make() {
    m_view.begin();
    if (m_startsWithTest) m_view.showSelfTest();
    m_shown = std::make_unique<Shown>(
        WalkthroughWindow::Platform{m_context.platform.defaults(), m_context.platform.compositor(),
                                    m_context.platform.overlayHints()},
        m_ui);
    WalkthroughWindow* window = &m_shown->window;
    takeLook();
    takeRoom();
    connect(window, &WalkthroughWindow::closeAsked, &m_view, &Walkthrough::close);
    connect(window, &WalkthroughWindow::activated, &m_view, &Walkthrough::refresh);
    connect(window, &WalkthroughWindow::tallestChanged, this, &DesktopWalkthrough::takeRoom);
    connect(window, &QWindow::screenChanged, this, &DesktopWalkthrough::takeLook);
    window->present(m_keyboard);
}

// Called by what goes with the window.
void DesktopWalkthrough::dismiss() {
    m_shown->window.hide();
    std::shared_ptr<Shown> going = std::move(m_shown);
    QMetaObject::invokeMethod(this, [going]() mutable { going.reset(); }, Qt::QueuedConnection);
}

void DesktopWalkthrough::takeRoom() {
    if (!m_shown || m_shown->window.rootObject() == nullptr) return;
    m_shown->window.rootObject()->setProperty("tallest", m_shown->window.tallest());
}

void DesktopWalkthrough::takeLook() {
    const DesktopLook look = m_context.platform.appearance().look();
    const double ratio = m_shown ? m_shown->window.devicePixelRatio() : qGuiApp->devicePixelRatio();
    m_look.setDesktop(look);
    m_look.setTextScale(remainingTextScale(look.textScale.value_or(1), ratio));
    const bool isOpaque = m_context.platform.compositor().translucency() == Translucency::None;
    m_look.setTier(isOpaque ? PanelLook::Tier::Opaque : PanelLook::Tier::NoBlur);
}

} // namespace vorq
