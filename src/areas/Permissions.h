#pragma once

#include "platform/PermissionProbe.h"

#include <QObject>
#include <QString>

namespace vorq {

class PrivacySettings;

/// "granted", "denied" or "pending".
[[nodiscard]] QString rawString(PermissionState state);

/// The permissions area: what was granted, and what the user should do about the rest. Main thread
/// only.
class Permissions final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString textCapturePermission READ textCaptureRaw NOTIFY changed)
    Q_PROPERTY(QString screenPermission READ screenRaw NOTIFY changed)
    Q_PROPERTY(QString microphonePermission READ microphoneRaw NOTIFY changed)
    Q_PROPERTY(bool showAccessibilityWalkthrough READ showAccessibilityWalkthrough NOTIFY changed)
    Q_PROPERTY(QString permissionMessage READ permissionMessage NOTIFY changed)

  public:
    [[nodiscard]] PermissionState textCapturePermission() const { return m_textCapture; }
    [[nodiscard]] PermissionState screenPermission() const { return m_screen; }
    [[nodiscard]] PermissionState microphonePermission() const { return m_microphone; }
    [[nodiscard]] QString textCaptureRaw() const { return rawString(m_textCapture); }
    [[nodiscard]] QString screenRaw() const { return rawString(m_screen); }
    [[nodiscard]] QString microphoneRaw() const { return rawString(m_microphone); }
    [[nodiscard]] bool showAccessibilityWalkthrough() const { return m_showWalkthrough; }
    [[nodiscard]] const QString& permissionMessage() const { return m_message; }

    /// Without a probe everything stays pending. The probe must outlive this object.
    void setProbe(const PermissionProbe* probe) { m_probe = probe; }

    /// Where reading others is allowed; nothing can be requested without. The same holds for it.
    void setPrivacySettings(PrivacySettings* settings) { m_privacySettings = settings; }

    Q_INVOKABLE void refreshPermissions();

    /// Opens the settings where the user lets Vorq read others, and says what to look for there,
    /// unless it may already.
    Q_INVOKABLE void requestTextCapturePermission();

    /// Shows the walkthrough, as the user asks for it.
    Q_INVOKABLE void openAccessibilityWalkthrough() { setShowAccessibilityWalkthrough(true); }
    /// Takes it away. It does not come by itself again before the next launch.
    Q_INVOKABLE void denyAccessibilityWalkthrough();
    void setPermissionMessage(const QString& message);
    void setShowAccessibilityWalkthrough(bool show);

    /// Tells the user how to grant text capture anew after it was found not to work, and shows the
    /// walkthrough unless it was denied.
    void adviseToGrantAgain();

  signals:
    void changed();
    /// The user has just been told how to grant text capture, maybe not for the first time.
    void advised();

  private:
    void tellWhatToLookFor();

    const PermissionProbe* m_probe = nullptr;
    PrivacySettings* m_privacySettings = nullptr;
    PermissionState m_textCapture = PermissionState::Pending;
    PermissionState m_screen = PermissionState::Pending;
    PermissionState m_microphone = PermissionState::Pending;
    bool m_showWalkthrough = false;
    bool m_isWalkthroughDenied = false;
    QString m_message;
};

} // namespace vorq
