#pragma once

#include <QString>

#include <system_error>

namespace vorq {

/// What an error number of the system means, such as "No space left on device".
[[nodiscard]] inline QString systemError(int number) {
    return QString::fromStdString(std::generic_category().message(number));
}

} // namespace vorq
