#include "shell/permissions/PermissionRows.h"

#include "areas/Permissions.h"

namespace vorq {

PermissionRows::PermissionRows(Permissions& permissions) : m_permissions(permissions) {
    connect(&permissions, &Permissions::changed, this, &PermissionRows::changed);
}

QString PermissionRows::textCapture() const {
    return m_permissions.textCaptureRaw();
}

QString PermissionRows::screen() const {
    return m_permissions.screenRaw();
}

QString PermissionRows::microphone() const {
    return m_permissions.microphoneRaw();
}

QString PermissionRows::message() const {
    const bool isGranted = m_permissions.textCapturePermission() == PermissionState::Granted;
    return isGranted ? QString() : m_permissions.permissionMessage();
}

void PermissionRows::refresh() {
    m_permissions.refreshPermissions();
}

} // namespace vorq
