#pragma once

#include "app/desktop/DesktopCapture.h"
#include "app/desktop/DesktopParts.h"
#include "platform/linux/desktop/GatewayHandoff.h"
#include "platform/linux/desktop/LinuxDesktopLook.h"
#include "platform/linux/desktop/SessionKind.h"
#include "platform/linux/x11/X11Compositor.h"
#include "platform/linux/x11/X11OverlayHints.h"
#include "platform/linux/x11/X11PressMonitor.h"
#include "shell/dialogs/FilePicker.h"
#include "shell/look/PanelLook.h"
#include "shell/panel/PanelViewModel.h"
#include "shell/window/FocusLoss.h"
#include "shell/window/PanelPages.h"
#include "shell/window/PanelWindowController.h"
#include "shell/window/QuickPanelWindow.h"
#include "ui/bindings/UiContext.h"

#include <QQmlEngine>

namespace vorq {

/// The panel on the user's desktop: its pages, the window that shows them, and what moves the
/// window. Needs a QApplication. Main thread only.
class DesktopPanel final : public PanelPresence {
  public:
    /// Context, screens and showings must outlive the panel. Its pages come with prepareFurther(),
    /// so that showing it is a matter of mapping its window, and at the latest when it is shown.
    DesktopPanel(const PanelContext& context, Screens& screens, PanelShowings& showings,
                 SessionKind session);
    ~DesktopPanel() override;

    [[nodiscard]] bool isPanelVisible() const override { return m_controller.isPanelVisible(); }
    bool prepareFurther() override;
    void show() override;
    void showBeside() override;
    void hide() override { m_controller.hide(); }
    void yieldFocus() override { m_controller.yieldFocus(); }

  private:
    void prepareWindow();
    void finishPages();
    void connectParts(const PanelContext& context, PanelShowings& showings);
    void takeLook();
    void closeOnFocusLoss();

    GatewayHandoff m_localSignIn;
    PanelViewModel m_view;
    PanelLook m_look;
    LinuxDesktopLook& m_desktop;
    UiContext m_ui;
    FilePicker m_files;
    QQmlEngine m_engine;
    X11Compositor m_compositor;
    X11OverlayHints m_hints;
    X11PressMonitor m_presses;
    QuickPanelWindow m_window;
    PanelPages m_pages;
    PanelWindowController m_controller;
    FocusLoss m_focusLoss;
    ShellNotifications& m_notifications;
    bool m_isWindowPrepared = false;
};

} // namespace vorq
