#include "pages/AccountPage.h"
#include "pages/SignInPages.h"
#include "support/Utf8.h"
#include "web/Site.h"
#include "web/Visit.h"

#include <charconv>

namespace vorq::gateway {
namespace {

std::string accountHtml(const Site& site, const Visit& visit, AccountView view) {
    const Identity& identity = visit.requiredIdentity();
    if (view.account.id == 0) view.account = identity.account;
    view.token = visit.ownersToken();
    view.signIns = site.web.signIns(identity);
    view.ownFamily = identity.owner.familyId;
    view.isAdministrator = visit.isOwnersBrowser();
    return accountPage(view);
}

/// The sentence for the change that was just made.
std::string savedNotice(const std::string& what) {
    if (what == "profile") return "Your profile is saved.";
    if (what == "privacy") return "Your email address and password are saved.";
    if (what == "ended") return "The sign-in has ended.";
    if (what == "others") return "All other sign-ins have ended.";
    return {};
}

ApiReply showAccount(const Site& site, const PageCall& call) {
    const Visit visit(site.web, call);
    if (!visit.identity())
        return redirection(signInAddress({.next = "/account.html", .client = {}}, false));
    return visit.page(
        accountHtml(site, visit, {.notice = savedNotice(fieldIn(call.query, "saved"))}));
}

/// The account as it was typed, to be put right.
Account typedProfile(const Visit& visit) {
    Account account = visit.requiredIdentity().account;
    account.firstName = visit.typed("firstName");
    account.lastName = visit.typed("lastName");
    account.username = visit.typed("username");
    account.useCase = visit.typed("useCase");
    return account;
}

/// Does what a form asks for, or shows beside it why not.
template<typename Change>
PageHandler accountForm(const Site& site, const char* form, const char* saved, Change change) {
    return [&site, form, saved, change](const PageCall& call) {
        const Visit visit(site.web, call);
        if (!visit.identity())
            return redirection(signInAddress({.next = "/account.html", .client = {}}, false));
        visit.checkOwnersForm();
        try {
            change(site, visit);
            return redirection(std::string("/account.html?saved=") + saved);
        } catch (const ApiError& error) {
            const bool isProfile = std::string_view(form) == kProfileForm;
            return visit.page(accountHtml(site, visit,
                                          {.account = isProfile ? typedProfile(visit) : Account(),
                                           .problem = problemFor(error),
                                           .problemForm = form}),
                              error);
        }
    };
}

void saveProfile(const Site& site, const Visit& visit) {
    static_cast<void>(site.accounts.updateProfile(visit.requiredIdentity(),
                                                  {.firstName = visit.typed("firstName"),
                                                   .lastName = visit.typed("lastName"),
                                                   .username = visit.typed("username"),
                                                   .useCase = visit.typed("useCase"),
                                                   .preferredModel = std::nullopt}));
}

void savePrivacy(const Site& site, const Visit& visit) {
    const Account& account = visit.requiredIdentity().account;
    const std::string email(trimmed(visit.typed("email")));
    PrivacyChange change{.email = lowered(email) == account.email ? std::string() : email,
                         .currentPassword = visit.typed("currentPassword"),
                         .newPassword = visit.typed("newPassword")};
    // Whoever is signed in to an account without a password is asked for none.
    if (!account.passwordHash) change.currentPassword = "none";
    static_cast<void>(site.accounts.updatePrivacy(visit.requiredIdentity(), change));
}

void endSignIn(const Site& site, const Visit& visit) {
    const std::string number = visit.typed("signIn");
    std::int64_t family = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), family);
    if (error != std::errc() || end != number.data() + number.size())
        throw ApiError(400, "There is no such sign-in.");
    site.web.endSignIn(visit.requiredIdentity(), family);
}

void endOthers(const Site& site, const Visit& visit) {
    site.web.endOtherSignIns(visit.requiredIdentity());
}

ApiReply signOut(const Site& site, const PageCall& call) {
    const Visit visit(site.web, call);
    if (visit.identity()) {
        visit.checkOwnersForm();
        static_cast<void>(site.accounts.signOut(visit.requiredIdentity()));
    }
    return visit.signedInto("/signin.html?done=out", {});
}

} // namespace

void addAccountPages(RequestRouter& router, const Site& site) {
    router.addPage("GET", "/account.html",
                   {.page = [&site](const PageCall& call) { return showAccount(site, call); }});
    router.addPage("POST", kProfileForm,
                   {.page = accountForm(site, kProfileForm, "profile", saveProfile)});
    router.addPage(
        "POST", kPrivacyForm,
        {.page = accountForm(site, kPrivacyForm, "privacy", savePrivacy), .hashes = true});
    router.addPage("POST", kEndSignInForm,
                   {.page = accountForm(site, kEndSignInForm, "ended", endSignIn)});
    router.addPage("POST", kEndOthersForm,
                   {.page = accountForm(site, kEndOthersForm, "others", endOthers)});
    router.addPage("POST", kSignOutForm,
                   {.page = [&site](const PageCall& call) { return signOut(site, call); }});
}

} // namespace vorq::gateway
