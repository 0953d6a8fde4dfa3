#pragma once

#include "shell/dialogs/WindowPlacement.h"

#include <QQuickView>

#include <optional>

namespace vorq {

class Defaults;
class OverlayHints;

/// The window of the settings, among the windows of the desktop. It comes up where it was left.
/// Main thread only.
class SettingsWindow final : public QQuickView {
    Q_OBJECT

  public:
    /// Where its place is stored: "x y width height", and " max" for one that is maximised.
    static inline const QString placeKey = QStringLiteral("vorq.settingsWindow.place");

    /// What the system offers; all must outlive the window.
    struct Platform {
        Defaults& defaults;
        OverlayHints& hints;
    };

    /// The engine must outlive the window.
    SettingsWindow(const Platform& platform, QQmlEngine* engine);
    ~SettingsWindow() override;

    /// Brings it up before all others, with the keyboard.
    void present();

  signals:
    /// The user wants it closed. It stays until it is hidden.
    void closeAsked();
    /// The user has come to it.
    void activated();

  protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

  private:
    void restorePlace();
    void notePlace();
    void keepPlace();

    Platform m_platform;
    std::optional<WindowPlace> m_place; // nothing until it is shown
};

} // namespace vorq
