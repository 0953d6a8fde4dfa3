#pragma once

#include "CommandPages.h"

namespace vorq::packaging {

[[nodiscard]] std::string bashCompletion(const Program& program);
[[nodiscard]] std::string zshCompletion(const Program& program);
[[nodiscard]] std::string fishCompletion(const Program& program);

} // namespace vorq::packaging
