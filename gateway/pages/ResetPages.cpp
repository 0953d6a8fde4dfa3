#include "pages/ResetPages.h"

#include "pages/PageFrame.h"

namespace vorq::gateway {
namespace {

std::string resetDocument(const std::string& title, const Markup& content) {
    return documentOf({.title = title,
                       .main = Markup::element("div", {{"class", "card"}},
                                               Markup::element("h1", {}, title) + content)});
}

} // namespace

std::string forgotPage(const ForgotView& view) {
    const std::string title = "Forgot your password?";
    const Markup back =
        Markup::element("p", {{"class", "below"}}, link("/signin.html", "Back to sign-in"));
    if (view.isAsked) {
        return resetDocument(
            title,
            Markup::element("p", {{"role", "status"}},
                            "If that address has an account, a link to choose a new password was "
                            "written where vorq-gateway runs. Ask whoever runs it for the link; "
                            "it holds for an hour.") +
                Markup::element(
                    "p", {},
                    Markup("On the computer of the gateway, this prints one as well: ") +
                        Markup::element("code", {}, "vorq-gateway reset-link")) +
                back);
    }
    return resetDocument(
        title, formNotice(view.problem) +
                   postForm("/forgot.html", view.token,
                            inputField({.name = "email",
                                        .label = "Email address",
                                        .type = "email",
                                        .autocomplete = "username",
                                        .value = view.email,
                                        .isRequired = true},
                                       view.problem) +
                                button({.text = "Ask for a link", .kind = "primary wide-button"})) +
                   back);
}

std::string resetPage(const ResetView& view) {
    return resetDocument(
        "Choose a new password",
        formNotice(view.problem) +
            postForm("/reset.html", view.token,
                     hiddenField("code", view.code) +
                         inputField({.name = "newPassword",
                                     .label = "New password",
                                     .type = "password",
                                     .autocomplete = "new-password",
                                     .hint = "At least 8 characters. All sign-ins of the account "
                                             "end with the old one.",
                                     .isRequired = true},
                                    view.problem) +
                         button({.text = "Save password", .kind = "primary wide-button"})));
}

} // namespace vorq::gateway
