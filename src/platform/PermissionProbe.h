#pragma once

#include <QString>

namespace vorq {

enum class PermissionState { Granted, Denied, Pending };

/// Asks the system what the program may do.
class PermissionProbe {
  public:
    PermissionProbe() = default;
    PermissionProbe(const PermissionProbe&) = delete;
    PermissionProbe& operator=(const PermissionProbe&) = delete;
    virtual ~PermissionProbe() = default;

    [[nodiscard]] virtual PermissionState textCapture() const = 0;
    [[nodiscard]] virtual PermissionState screen() const = 0;
    [[nodiscard]] virtual PermissionState microphone() const = 0;

    /// The name under which the system's privacy list shows the program.
    [[nodiscard]] virtual QString privacyListName() const = 0;

    /// The file that a grant applies to.
    [[nodiscard]] virtual QString processPath() const = 0;
};

} // namespace vorq
