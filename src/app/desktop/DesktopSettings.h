#pragma once

#include "platform/DesktopPlatform.h"
#include "shell/dialogs/FilePicker.h"
#include "shell/look/PanelLook.h"
#include "shell/settings/SettingsViewModel.h"
#include "shell/settings/SettingsWindow.h"
#include "ui/bindings/UiContext.h"

#include <QObject>
#include <QQmlEngine>

#include <functional>
#include <memory>

namespace vorq {

/// What the settings are made from. All of it must outlive them.
struct SettingsContext {
    DesktopPlatform& platform;
    VorqAppState& state;
    PanelHolds& holds;
    /// Has the system let the program read others. The user has agreed.
    std::function<void()> openAccessibility;
    std::function<void()> openSelfTest;
};

/// The settings on the user's desktop. Window and pages are there while they are seen; what the
/// user has entered outlives them. Needs a QApplication. Main thread only.
class DesktopSettings final : public QObject {
    Q_OBJECT

  public:
    explicit DesktopSettings(const SettingsContext& context);
    ~DesktopSettings() override;

    /// Opens the window, or brings it forward if it is open.
    void show();

    /// Emits quitAllowed() unless the user has entered what is not saved and wants to keep it.
    void requestQuit();

  signals:
    void quitAllowed();

  private:
    struct Shown {
        Shown(const SettingsWindow::Platform& platform, UiContext& context);
        ~Shown();

        QQmlEngine engine;
        SettingsWindow window;
    };

    void make();
    void close();
    void bringQuestionForward();
    void takeLook();

    SettingsContext m_context;
    SettingsViewModel m_view;
    PanelLook m_look;
    UiContext m_ui;
    FilePicker m_files;
    std::unique_ptr<Shown> m_shown;
};

} // namespace vorq
