#pragma once

#include "platform/PortSupport.h"

#include <QString>
#include <QStringList>

namespace vorq {

/// The installed files, for the uninstaller.
class Installation {
  public:
    Installation() = default;
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;
    virtual ~Installation() = default;

    /// Whether it is known what files those are, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    /// Absolute, clean paths of all that makes this program appear among the user's applications,
    /// each once. Not all of it need be there.
    [[nodiscard]] virtual QStringList files() const = 0;

    /// What of the program stays and why, a sentence each.
    [[nodiscard]] virtual QStringList advice() const = 0;
};

} // namespace vorq
