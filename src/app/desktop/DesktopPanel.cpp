#include "app/desktop/DesktopPanel.h"

#include "core/VorqAppState.h"
#include "platform/copying/Pasteboard.h"
#include "shell/look/TextScale.h"
#include "shell/notices/ShellNotifications.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QQuickItem>
#include <QWindow>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
DesktopPanel::DesktopPanel(const PanelContext& context)
    : m_view(context.state, context.platform.clock(), context.reader,
             &context.platform.localSignIn(),
             context.platform.pasteboard().supported() ? &context.platform.pasteboard() : nullptr),
      m_look(context.state.appearance()),
      m_appearance(context.platform.appearance()),
      m_compositor(context.platform.compositor()),
      m_ui(m_view, m_look),
      m_files(context.holds),
      m_window({context.platform.screens(), m_compositor, context.platform.overlayHints()},
               &m_engine),
      m_pages(m_window, QUrl(u"qrc:/qt/qml/Vorq/panel/PanelView.qml"_s)),
      m_controller({context.platform.clock(), context.platform.defaults(),
                    context.platform.screens(), context.platform.workspace(),
                    context.platform.presses(), context.holds, context.notifications,
                    static_cast<ProcessId>(QCoreApplication::applicationPid())},
                   m_window),
      m_focusLoss(context.platform.clock(), [this] { m_controller.hideForFocusElsewhere(); }),
      m_notifications(context.notifications) {
    m_ui.install(m_engine);
    connectParts(context);
    if (!context.platform.presses().supported()) closeOnFocusLoss();
    takeLook();
}

DesktopPanel::~DesktopPanel() {
    // The pages go before what they read.
    m_pages.clear();
}

bool DesktopPanel::prepareFurther() {
    if (m_pages.loadFurther()) return true;
    prepareWindow();
    return false;
}

// The keyboard first: what is typed while the pages are made waits for the draft, and would reach
// the application in front otherwise.
void DesktopPanel::show() {
    prepareWindow();
    m_controller.show();
    finishPages();
}

void DesktopPanel::showBeside() {
    prepareWindow();
    m_controller.showBeside();
    finishPages();
}

void DesktopPanel::finishPages() {
    if (m_pages.isDone()) return;
    m_pages.finish();
    emit m_notifications.vorqFocusPrompt();
}

void DesktopPanel::prepareWindow() {
    if (!std::exchange(m_isWindowPrepared, true)) m_window.prepare();
}

void DesktopPanel::connectParts(const PanelContext& context) {
    ShellNotifications* notifications = &context.notifications;
    QObject::connect(notifications, &ShellNotifications::vorqFocusPrompt, &m_window, [this] {
        if (QQuickItem* page = m_window.rootObject())
            QMetaObject::invokeMethod(page, "focusPrompt");
    });
    QObject::connect(notifications, &ShellNotifications::vorqPanelDockDragChanged, &m_window,
                     [this](bool isDragging) {
                         if (QQuickItem* page = m_window.rootObject())
                             page->setProperty("isDockDragging", isDragging);
                     });
    QObject::connect(&m_view, &PanelViewModel::focusPromptWanted, notifications,
                     &ShellNotifications::vorqFocusPrompt);
    QObject::connect(&m_view, &PanelViewModel::attentionWanted, notifications,
                     &ShellNotifications::vorqGuidePanelAccess);
    QObject::connect(&m_view, &PanelViewModel::settingsWanted, notifications,
                     &ShellNotifications::vorqOpenSettings);
    m_files.setOwner(&m_window);
    QObject::connect(&m_view, &PanelViewModel::filesWanted, &m_files, &FilePicker::choose);
    QObject::connect(&m_files, &FilePicker::chosen, m_view.intake(),
                     &AttachmentIntake::attachFiles);
    m_controller.setCloseInnermost([this] { return m_view.closeInnermost(); });
    // A window manager may give the keyboard to nobody once the dialog is gone.
    QObject::connect(&m_files, &FilePicker::closed, &m_window, [this] {
        if (m_controller.isPanelVisible()) m_window.activate();
    });
    QObject::connect(&m_controller, &PanelWindowController::panelVisibleChanged, &m_window,
                     [this, &showings = context.showings] {
                         showings.isVisible = m_controller.isPanelVisible();
                         if (showings.isVisible) ++showings.count;
                         // It would stay alone with the keyboard.
                         if (!showings.isVisible) m_files.close();
                     });
    // What is held back does not wait unseen.
    HeldCapture* held = &context.state.hotKeyContext().held();
    QObject::connect(&m_controller, &PanelWindowController::panelVisibleChanged, held,
                     [this, held] {
                         if (!m_controller.isPanelVisible()) held->discard();
                     });
    QObject::connect(&m_compositor, &Compositor::changed, &m_window, [this] { takeLook(); });
    QObject::connect(&m_appearance, &DesktopAppearance::changed, &m_window, [this] { takeLook(); });
    QObject::connect(&m_window, &QWindow::screenChanged, &m_window, [this] { takeLook(); });
}

// Where presses on other windows are nobody's to know.
void DesktopPanel::closeOnFocusLoss() {
    QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, &m_window,
                     [this](const QWindow* window) { m_focusLoss.setActive(window != nullptr); });
}

void DesktopPanel::takeLook() {
    const DesktopLook look = m_appearance.look();
    m_look.setDesktop(look);
    m_look.setTextScale(
        remainingTextScale(look.textScale.value_or(1), m_window.devicePixelRatio()));
    m_look.setTranslucency(m_compositor.translucency());
    m_window.setReducedMotion(m_look.reducesMotion());
}

} // namespace vorq
