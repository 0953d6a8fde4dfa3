#pragma once

#include "platform/PermissionProbe.h"

namespace vorq {

/// Grants what it is told.
class ScriptedPermissionProbe final : public PermissionProbe {
  public:
    PermissionState text = PermissionState::Pending;
    PermissionState screenAccess = PermissionState::Pending;
    PermissionState microphoneAccess = PermissionState::Pending;
    QString path = QStringLiteral("/bin/vorq");

    [[nodiscard]] PermissionState textCapture() const override { return text; }
    [[nodiscard]] PermissionState screen() const override { return screenAccess; }
    [[nodiscard]] PermissionState microphone() const override { return microphoneAccess; }
    [[nodiscard]] QString privacyListName() const override { return QStringLiteral("Vorq"); }
    [[nodiscard]] QString processPath() const override { return path; }
};

} // namespace vorq
