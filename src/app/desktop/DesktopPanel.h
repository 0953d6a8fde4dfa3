#pragma once

#include "app/desktop/DesktopCapture.h"
#include "platform/DesktopLook.h"
#include "platform/DesktopPlatform.h"
#include "shell/dialogs/FilePicker.h"
#include "shell/look/PanelLook.h"
#include "shell/panel/PanelViewModel.h"
#include "shell/window/FocusLoss.h"
#include "shell/window/PanelPages.h"
#include "shell/window/PanelPresence.h"
#include "shell/window/PanelWindowController.h"
#include "shell/window/QuickPanelWindow.h"
#include "ui/bindings/UiContext.h"

#include <QQmlEngine>

namespace vorq {

/// What the panel is made from. All of it must outlive the panel.
struct PanelContext {
    DesktopPlatform& platform;
    VorqAppState& state;
    AttachmentReader& reader;
    PanelHolds& holds;
    ShellNotifications& notifications;
    PanelShowings& showings;
};

/// The panel on the user's desktop: its pages, the window that shows them, and what moves the
/// window. Needs a QApplication. Main thread only.
class DesktopPanel final : public PanelPresence {
  public:
    /// Its pages come with prepareFurther(), so that showing it is a matter of mapping its window,
    /// and at the latest when it is shown.
    explicit DesktopPanel(const PanelContext& context);
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
    void connectParts(const PanelContext& context);
    void takeLook();
    void closeOnFocusLoss();

    PanelViewModel m_view;
    PanelLook m_look;
    DesktopAppearance& m_appearance;
    Compositor& m_compositor;
    UiContext m_ui;
    FilePicker m_files;
    QQmlEngine m_engine;
    QuickPanelWindow m_window;
    PanelPages m_pages;
    PanelWindowController m_controller;
    FocusLoss m_focusLoss;
    ShellNotifications& m_notifications;
    bool m_isWindowPrepared = false;
};

} // namespace vorq
