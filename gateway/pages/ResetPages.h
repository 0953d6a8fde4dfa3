#pragma once

#include "pages/FormParts.h"

#include <string>

namespace vorq::gateway {

/// Asks for the address of who forgot a password.
struct ForgotView {
    std::string token;
    std::string email = {};
    FormProblem problem = {};
    bool isAsked = false; ///< the answer, the same for every address
};
[[nodiscard]] std::string forgotPage(const ForgotView& view);

/// Asks for the new password.
struct ResetView {
    std::string token;
    std::string code;
    FormProblem problem = {};
};
[[nodiscard]] std::string resetPage(const ResetView& view);

} // namespace vorq::gateway
