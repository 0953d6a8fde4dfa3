#pragma once

#include "platform/PortSupport.h"

#include <QString>
#include <QStringList>

namespace vorq {

/// The installed program.
class Installation {
  public:
    Installation() = default;
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;
    virtual ~Installation() = default;

    /// Whether it is known what files those are, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    /// Whether the program that runs is one of the user's applications, as the desktop lists them.
    [[nodiscard]] virtual bool isInstalled() const = 0;

    /// Absolute, clean paths of all that makes this program appear among the user's applications,
    /// each once. Not all of it need be there.
    [[nodiscard]] virtual QStringList files() const = 0;

    /// What of the program stays and why, a sentence each.
    [[nodiscard]] virtual QStringList advice() const = 0;
};

} // namespace vorq
