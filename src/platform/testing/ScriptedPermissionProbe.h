#pragma once

#include "platform/PermissionProbe.h"

namespace vorq {

/// Grants what it is told.
class ScriptedPermissionProbe final : public PermissionProbe {
  public:
    PermissionState text = PermissionState::Pending;

    [[nodiscard]] PermissionState textCapture() const override { return text; }
    [[nodiscard]] PermissionState screen() const override { return PermissionState::Pending; }
    [[nodiscard]] PermissionState microphone() const override { return PermissionState::Pending; }
    [[nodiscard]] QString privacyListName() const override { return QStringLiteral("Vorq"); }
    [[nodiscard]] QString processPath() const override { return QStringLiteral("/bin/vorq"); }
};

} // namespace vorq
