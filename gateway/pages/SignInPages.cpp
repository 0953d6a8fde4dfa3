#include "pages/SignInPages.h"

#include "pages/PageFrame.h"
#include "support/UrlText.h"

namespace vorq::gateway {
namespace {

Markup targetFields(const SignInTarget& target) {
    return hiddenField("next", target.next) + hiddenField("client", target.client);
}

Markup passwordForm(const SignInView& view) {
    Markup content =
        hiddenField("mode", view.isSignUp ? "sign-up" : "sign-in") + targetFields(view.target) +
        inputField({.name = "email",
                    .label = "Email address",
                    .type = "email",
                    .autocomplete = "username",
                    .value = view.email,
                    .isRequired = true},
                   view.problem) +
        inputField({.name = "password",
                    .label = "Password",
                    .type = "password",
                    .autocomplete = view.isSignUp ? "new-password" : "current-password",
                    .hint = view.isSignUp ? "At least 8 characters." : "",
                    .isRequired = true},
                   view.problem);
    content += button(
        {.text = view.isSignUp ? "Create account" : "Sign in", .kind = "primary wide-button"});
    return postForm("/signin.html", view.token, content);
}

/// Ways that ask for no password.
Markup shortWays(const SignInView& view) {
    Markup ways;
    if (!view.knownEmail.empty()) {
        ways += plainForm(view.target.next, hiddenField("client", view.target.client) +
                                                button({.text = "Continue as " + view.knownEmail,
                                                        .kind = "wide-button"}));
    }
    if (view.canContinueHere) {
        ways += postForm("/auth/this-computer", view.token,
                         targetFields(view.target) +
                             button({.text = "Continue on this computer", .kind = "wide-button"}));
    }
    if (view.target.isForProgram()) {
        ways += plainForm("/auth/mac-cancel.html",
                          hiddenField("client", view.target.client) +
                              button({.text = "Cancel", .kind = "wide-button"}));
    }
    if (ways.isEmpty()) return ways;
    return Markup::literal(R"(<hr class="rule">)") + ways;
}

Markup otherPages(const SignInView& view) {
    const Markup other =
        view.isSignUp
            ? Markup("Have an account already? ") +
                  link(signInAddress(view.target, false), "Sign in")
            : Markup("New here? ") + link(signInAddress(view.target, true), "Create an account");
    Markup lines = Markup::element("p", {{"class", "below"}}, other);
    if (!view.isSignUp) {
        lines += Markup::element("p", {{"class", "below"}},
                                 link("/forgot.html", "Forgot your password?"));
    }
    return lines;
}

} // namespace

std::string addressOf(const SignInTarget& target) {
    return target.isForProgram() ? target.next + "?client=" + urlEscaped(target.client)
                                 : target.next;
}

std::string signInAddress(const SignInTarget& target, bool isSignUp) {
    std::string address = std::string("/signin.html?mode=") + (isSignUp ? "sign-up" : "sign-in");
    if (target.isForProgram()) address += "&client=" + urlEscaped(target.client);
    return address + "&next=" + urlEscaped(target.next);
}

std::string signInPage(const SignInView& view) {
    const std::string title = view.isSignUp ? "Create an account" : "Sign in";
    const std::string heading =
        view.target.isForProgram() && !view.isSignUp ? "Sign in to Vorq" : title;
    const Markup content = Markup::element("h1", {}, heading) + notice(view.notice) +
                           formNotice(view.problem) + passwordForm(view) + otherPages(view) +
                           shortWays(view);
    return documentOf(
        {.title = title, .main = Markup::element("div", {{"class", "card"}}, content)});
}

} // namespace vorq::gateway
