#pragma once

#include "platform/Installation.h"

namespace vorq {

/// An installation of whatever files a test names.
class ScriptedInstallation final : public Installation {
  public:
    bool installed = false;
    QStringList paths;
    QStringList sentences;

    [[nodiscard]] bool isInstalled() const override { return installed; }
    [[nodiscard]] QStringList files() const override { return paths; }
    [[nodiscard]] QStringList advice() const override { return sentences; }
};

} // namespace vorq
