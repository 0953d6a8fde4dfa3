#pragma once

#include "platform/AppPaths.h"

namespace vorq {

/// The places of the XDG base directory conventions.
class XdgPaths final : public AppPaths {
  public:
    [[nodiscard]] QString home() const override;
    [[nodiscard]] QString executableFolder() const override;
    [[nodiscard]] QString resourcesFolder() const override;
    [[nodiscard]] QString applicationSupportFolder() const override;
    [[nodiscard]] QString settingsFolder() const override;
    [[nodiscard]] QString cacheFolder() const override;
};

/// The user's home folder: HOME, or without that what the system knows of the user.
[[nodiscard]] QString userHome();

/// The user's configuration folder, in which Vorq has one of its own.
[[nodiscard]] QString configurationFolder(const AppPaths& paths);

/// Vorq's file of settings.
[[nodiscard]] QString settingsPath(const AppPaths& paths);

} // namespace vorq
