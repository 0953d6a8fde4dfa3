#pragma once

#include "app/desktop/HostSystem.h"

namespace vorq {

/// Linux with an X server, Wayland or neither.
class LinuxHostSystem final : public HostSystem {
  public:
    [[nodiscard]] std::unique_ptr<DesktopPlatform> makePlatform() const override;
    [[nodiscard]] std::optional<Clock::Duration> startOfThisProcess() const override;
    /// Of a Wayland session nothing: an X server knows its own windows only.
    [[nodiscard]] std::optional<ProcessId> frontmostProcess() const override;
    [[nodiscard]] bool hasScreen() const override;
    [[nodiscard]] QString lockFolder() const override;
    /// Keeps a hanging accessibility bus from holding up the start, and chooses the X server of a
    /// Wayland session.
    [[nodiscard]] std::unique_ptr<ApplicationBirth>
    prepareApplication(const QDBusConnection& bus) const override;
    [[nodiscard]] std::expected<void, QString> enableAccessibility() const override;
};

} // namespace vorq
