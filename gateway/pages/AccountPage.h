#pragma once

#include "pages/FormParts.h"
#include "storage/AccountTable.h"
#include "storage/SignInTable.h"

#include <string>
#include <vector>

namespace vorq::gateway {

struct AccountView {
    Account account = {};
    std::string token = {};
    std::vector<SignIn> signIns = {};
    std::int64_t ownFamily = 0;
    std::string notice = {};
    /// Of the form whose path is `problemForm`.
    FormProblem problem = {};
    std::string problemForm = {};
    bool isAdministrator = false;
};

/// Paths of its forms.
inline constexpr const char* kProfileForm = "/account/profile";
inline constexpr const char* kPrivacyForm = "/account/privacy";
inline constexpr const char* kEndSignInForm = "/account/end-sign-in";
inline constexpr const char* kEndOthersForm = "/account/end-others";
inline constexpr const char* kSignOutForm = "/account/sign-out";

[[nodiscard]] std::string accountPage(const AccountView& view);

} // namespace vorq::gateway
