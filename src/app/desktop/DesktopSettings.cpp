#include "app/desktop/DesktopSettings.h"

#include "core/VorqAppState.h"
#include "platform/DesktopLook.h"
#include "shell/look/TextScale.h"
#include "shell/notices/ShellLog.h"

#include <QGuiApplication>
#include <QQmlError>
#include <QQuickItem>

using namespace Qt::StringLiterals;

namespace vorq {

DesktopSettings::Shown::Shown(const SettingsWindow::Platform& platform, UiContext& context)
    : window(platform, &engine) {
    context.install(engine);
    window.setSource(QUrl(u"qrc:/qt/qml/Vorq/settings/SettingsView.qml"_s));
    for (const QQmlError& error : window.errors())
        qCCritical(shellLog, "Vorq: the settings do not load: %s",
                   qUtf8Printable(error.toString()));
    // Until the first frame, which would come up after a flash of white.
    if (const QQuickItem* page = window.rootObject())
        window.setColor(page->property("color").value<QColor>());
}

// The pages go before what they read.
DesktopSettings::Shown::~Shown() {
    window.setSource({});
}

DesktopSettings::DesktopSettings(const SettingsContext& context)
    : m_context(context),
      m_view(context.state, &context.platform.localSignIn(), context.platform.documentTools()),
      m_look(context.state.appearance(), PanelLook::Surface::Window),
      m_ui(m_view, m_look),
      m_files(context.holds) {
    connect(&m_view, &SettingsViewModel::pictureWanted, &m_files,
            &FilePicker::chooseProfilePicture);
    connect(&m_files, &FilePicker::chosen, this,
            [this](const QList<QUrl>& files) { m_view.profile()->usePicture(files.value(0)); });
    connect(m_view.permissions(), &PermissionRows::textCaptureWanted, this, [this] {
        m_context.openAccessibility();
        m_view.permissions()->refresh();
    });
    connect(m_view.permissions(), &PermissionRows::selfTestWanted, this,
            [this] { m_context.openSelfTest(); });
    connect(m_view.navigation(), &SettingsNavigation::closeAllowed, this, &DesktopSettings::close);
    connect(m_view.navigation(), &SettingsNavigation::quitAllowed, this,
            &DesktopSettings::quitAllowed);
    connect(m_view.navigation(), &SettingsNavigation::changed, this,
            &DesktopSettings::bringQuestionForward);
    connect(&context.platform.appearance(), &DesktopAppearance::changed, this,
            &DesktopSettings::takeLook);
    takeLook();
}

DesktopSettings::~DesktopSettings() = default;

void DesktopSettings::show() {
    m_view.navigation()->showSettings();
    m_view.permissions()->refresh();
    if (!m_shown) make();
    m_shown->window.present();
}

void DesktopSettings::requestQuit() {
    m_view.navigation()->requestQuit();
}

// The window may be minimised, or behind others.
void DesktopSettings::bringQuestionForward() {
    if (!m_view.navigation()->asksToDiscard() || !m_shown) return;
    // One that was minimised while it was active counts as that until another one is.
    const SettingsWindow& window = m_shown->window;
    const bool isSeen = window.isActive() && !window.windowStates().testFlag(Qt::WindowMinimized);
    if (!isSeen) m_shown->window.present();
}

void DesktopSettings::make() {
    m_shown = std::make_unique<Shown>(
        SettingsWindow::Platform{m_context.platform.defaults(), m_context.platform.overlayHints()},
        m_ui);
    SettingsWindow* window = &m_shown->window;
    m_files.setOwner(window);
    takeLook();
    connect(window, &SettingsWindow::closeAsked, m_view.navigation(),
            &SettingsNavigation::requestClose);
    connect(window, &SettingsWindow::activated, m_view.permissions(), &PermissionRows::refresh);
    connect(window, &QWindow::screenChanged, this, &DesktopSettings::takeLook);
}

// Called by what goes with the window.
void DesktopSettings::close() {
    if (!m_shown) return;
    m_files.close();
    m_shown->window.hide();
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_shown && !m_shown->window.isVisible()) m_shown.reset();
        },
        Qt::QueuedConnection);
}

void DesktopSettings::takeLook() {
    const DesktopLook look = m_context.platform.appearance().look();
    const double ratio = m_shown ? m_shown->window.devicePixelRatio() : qGuiApp->devicePixelRatio();
    for (PanelLook* each : {&m_look, m_view.panelLook()}) {
        each->setDesktop(look);
        each->setTextScale(remainingTextScale(look.textScale.value_or(1), ratio));
    }
}

} // namespace vorq
