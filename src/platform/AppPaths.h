#pragma once

#include <QString>

namespace vorq {

/// Where the program finds and keeps its files. Absolute paths without a slash at the end; an empty
/// string means that the place is unknown. Nothing here creates a folder.
class AppPaths {
  public:
    AppPaths() = default;
    AppPaths(const AppPaths&) = delete;
    AppPaths& operator=(const AppPaths&) = delete;
    virtual ~AppPaths() = default;

    [[nodiscard]] virtual QString home() const = 0;
    [[nodiscard]] virtual QString executableFolder() const = 0;
    [[nodiscard]] virtual QString resourcesFolder() const = 0;

    /// The user's folder for application data, in which Vorq has its own.
    [[nodiscard]] virtual QString applicationSupportFolder() const = 0;

    /// Vorq's own folder for settings.
    [[nodiscard]] virtual QString settingsFolder() const = 0;

    /// Vorq's own folder for what can be made anew.
    [[nodiscard]] virtual QString cacheFolder() const = 0;
};

} // namespace vorq
