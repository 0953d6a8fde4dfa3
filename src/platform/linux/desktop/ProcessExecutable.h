#pragma once

#include <QString>

#include <cstdint>

namespace vorq {

/// The file name of the program that a process runs; "" if the process is gone or of another user.
[[nodiscard]] QString executableName(std::int32_t process);

} // namespace vorq
