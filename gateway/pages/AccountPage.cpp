#include "pages/AccountPage.h"

#include "pages/PageFrame.h"
#include "pages/SignInRows.h"

namespace vorq::gateway {
namespace {

FormProblem problemOf(const AccountView& view, std::string_view form) {
    return view.problemForm == form ? view.problem : FormProblem();
}

Markup section(const std::string& id, const std::string& title, const Markup& content) {
    return Markup::element("section", {{"aria-labelledby", id}},
                           Markup::element("h2", {{"id", id}}, title) +
                               Markup::element("div", {{"class", "card"}}, content));
}

Markup profileForm(const AccountView& view) {
    const FormProblem problem = problemOf(view, kProfileForm);
    const auto field = [&](const char* name, const char* label, const char* autocomplete,
                           const std::string& value) {
        return inputField(
            {.name = name, .label = label, .autocomplete = autocomplete, .value = value}, problem);
    };
    const Account& account = view.account;
    return formNotice(problem) +
           postForm(kProfileForm, view.token,
                    Markup::element(
                        "div", {{"class", "pair"}},
                        field("firstName", "First name", "given-name", account.firstName) +
                            field("lastName", "Last name", "family-name", account.lastName) +
                            field("username", "Username", "nickname", account.username) +
                            field("useCase", "What you use Vorq for", "off", account.useCase)) +
                        button({.text = "Save profile", .kind = "primary"}));
}

Markup privacyForm(const AccountView& view) {
    const FormProblem problem = problemOf(view, kPrivacyForm);
    const bool hasPassword = view.account.passwordHash.has_value();
    Markup content = inputField({.name = "email",
                                 .label = "Email address",
                                 .type = "email",
                                 .autocomplete = "email",
                                 .value = view.account.email},
                                problem);
    if (hasPassword) {
        content += inputField({.name = "currentPassword",
                               .label = "Current password",
                               .type = "password",
                               .autocomplete = "current-password",
                               .isRequired = true},
                              problem);
    }
    content += inputField(
        {.name = "newPassword",
         .label = "New password",
         .type = "password",
         .autocomplete = "new-password",
         .hint = hasPassword ? "Leave it empty to keep the old one. A new one ends all other "
                               "sign-ins."
                             : "This account has none yet. At least 8 characters."},
        problem);
    return formNotice(problem) +
           postForm(kPrivacyForm, view.token,
                    content + button({.text = "Save email and password", .kind = "primary"}));
}

Markup signInList(const AccountView& view) {
    Markup content = formNotice(problemOf(view, kEndSignInForm)) +
                     signInRows(view.signIns, view.ownFamily, view.token);
    Markup actions = postForm(kSignOutForm, view.token, button({.text = "Sign out here"}));
    if (view.signIns.size() > 1) {
        actions += postForm(kEndOthersForm, view.token,
                            button({.text = "End all others", .kind = "danger"}));
    }
    return content + Markup::literal(R"(<hr class="rule">)") +
           Markup::element("div", {{"class", "actions"}}, actions);
}

Markup accountLinks(const AccountView& view) {
    Markup links =
        Markup::element("a", {{"href", "/account.html"}, {"aria-current", "page"}}, "Your account");
    if (view.isAdministrator) links += link("/admin.html", "Model and provider");
    return links;
}

} // namespace

std::string accountPage(const AccountView& view) {
    const Markup content =
        Markup::element("h1", {}, "Your account") +
        Markup::element(
            "p", {}, Markup("Signed in as ") + Markup::element("strong", {}, view.account.email)) +
        notice(view.notice) + section("profile", "Profile", profileForm(view)) +
        section("privacy", "Email and password", privacyForm(view)) +
        section("sign-ins", "Sign-ins", signInList(view));
    return documentOf({.title = "Your account",
                       .main = content,
                       .navigation = accountLinks(view),
                       .isWide = true});
}

} // namespace vorq::gateway
