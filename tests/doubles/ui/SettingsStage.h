#pragma once

#include "doubles/ui/PanelStage.h"
#include "platform/testing/ScriptedDocumentTools.h"
#include "shell/settings/SettingsViewModel.h"

#include <memory>

namespace vorq {

/// The pages of the settings over a scripted backend, in virtual time, signed in.
class SettingsStage {
  public:
    SettingsStage();
    ~SettingsStage();
    SettingsStage(const SettingsStage&) = delete;
    SettingsStage& operator=(const SettingsStage&) = delete;

    /// Shows them in a window of its own.
    void show(QSize size = {1120, 800});
    void settle(int milliseconds = 60);

    /// Whether all that the settings show is dark.
    void setDark(bool isDark);
    void open(SettingsNavigation::SettingsPane pane);
    [[nodiscard]] SettingsNavigation::SettingsPane pane() {
        return settings->navigation()->settingsPane();
    }
    [[nodiscard]] QQuickItem& root() { return *window->rootObject(); }
    /// The first visible item of the words; null without one.
    [[nodiscard]] QQuickItem* saying(const QString& words);
    /// The first visible item of the type.
    [[nodiscard]] QQuickItem& find(const QString& type);
    /// The field with this label.
    [[nodiscard]] QQuickItem& field(const QString& label);
    void click(const QString& words);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void type(const QString& text);
    /// What a screen reader calls what has the keyboard.
    [[nodiscard]] QString focused();

    PanelStage base; // the state and what is around it
    std::shared_ptr<ScriptedDocumentTools> tools = std::make_shared<ScriptedDocumentTools>();
    std::unique_ptr<SettingsViewModel> settings;
    std::unique_ptr<PanelLook> look;
    std::unique_ptr<UiContext> context;
    std::unique_ptr<QQmlEngine> engine;
    std::unique_ptr<QQuickView> window;
};

} // namespace vorq
