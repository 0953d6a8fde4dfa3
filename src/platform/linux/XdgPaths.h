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

} // namespace vorq
