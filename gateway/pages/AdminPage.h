#pragma once

#include "pages/FormParts.h"

#include <string>
#include <vector>

namespace vorq::gateway {

struct AdminView {
    std::string token;
    std::string url = {};
    std::string keyHeader = {};
    std::string model = {};
    /// One "id = model" a line.
    std::string models = {};
    bool hasKey = false;
    std::string settingsFile = {};
    /// Variables of the environment that win over what is saved.
    std::vector<std::string> overriding = {};
    FormProblem problem = {};
    std::string notice = {};
};

[[nodiscard]] std::string adminPage(const AdminView& view);

} // namespace vorq::gateway
