#pragma once

#include <QString>
#include <QStringList>

namespace vorq {

/// The program as it lies on the machine, for who takes it off.
class Installation {
  public:
    Installation() = default;
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;
    virtual ~Installation() = default;

    /// Absolute, clean paths of all that makes this program appear among the user's applications,
    /// each once. Not all of it need be there.
    [[nodiscard]] virtual QStringList files() const = 0;

    /// A sentence about what only the system can take off; "" for nothing.
    [[nodiscard]] virtual QString advice() const = 0;
};

} // namespace vorq
