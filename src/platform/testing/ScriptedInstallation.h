#pragma once

#include "platform/Installation.h"

namespace vorq {

/// An installation of whatever files a test names.
class ScriptedInstallation final : public Installation {
  public:
    QStringList paths;
    QString sentence;

    [[nodiscard]] QStringList files() const override { return paths; }
    [[nodiscard]] QString advice() const override { return sentence; }
};

} // namespace vorq
