#pragma once

#include "pages/FormParts.h"

#include <string>

namespace vorq::gateway {

/// Where a sign-in leads, carried through its forms.
struct SignInTarget {
    std::string next;   ///< one of the known paths
    std::string client; ///< "macos" for the program, empty for none

    [[nodiscard]] bool isForProgram() const { return !client.empty(); }
};

struct SignInView {
    bool isSignUp = false;
    SignInTarget target;
    std::string token;
    std::string email = {};
    FormProblem problem = {};
    std::string notice = {};
    /// Whether the browser belongs to the user who runs the gateway.
    bool canContinueHere = false;
    /// The account that the browser is signed in to; empty for none.
    std::string knownEmail = {};
};

[[nodiscard]] std::string signInPage(const SignInView& view);

/// The address of the page for the same target.
[[nodiscard]] std::string signInAddress(const SignInTarget& target, bool isSignUp);
/// Where to go once signed in.
[[nodiscard]] std::string addressOf(const SignInTarget& target);

} // namespace vorq::gateway
