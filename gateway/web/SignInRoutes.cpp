#include "pages/SignInPages.h"
#include "web/Site.h"
#include "web/Visit.h"

#include <algorithm>
#include <array>

namespace vorq::gateway {
namespace {

/// Where a sign-in may lead. Anything else would let others send people wherever they like.
SignInTarget targetIn(const Fields& fields) {
    constexpr std::array<std::string_view, 3> known = {"/account.html", "/auth/mac-handoff.html",
                                                       "/admin.html"};
    const std::string next = fieldIn(fields, "next");
    const bool isKnown = std::ranges::find(known, next) != known.end();
    return {.next = isKnown ? next : "/account.html",
            .client = fieldIn(fields, "client") == "macos" ? "macos" : ""};
}

bool isSignUp(const Fields& fields) {
    return fieldIn(fields, "mode") == "sign-up";
}

SignInView signInViewOf(const Visit& visit, const Fields& fields) {
    return {.isSignUp = isSignUp(fields),
            .target = targetIn(fields),
            .token = visit.strangersToken(),
            .canContinueHere = visit.isOwnersBrowser(),
            .knownEmail = visit.knownEmail()};
}

/// Whoever has an account here uses the provider at the cost of who runs the gateway.
constexpr auto kSignUpIsClosed =
    "New accounts are made by the user who runs this Vorq gateway, on the same computer.";

bool canSignUp(const Site& site, const Visit& visit) {
    return site.isSignUpOpen || visit.isOwnersBrowser();
}

ApiReply showSignIn(const Site& site, const PageCall& call) {
    const Visit visit(site.web, call);
    SignInView view = signInViewOf(visit, call.query);
    if (view.isSignUp && !canSignUp(site, visit)) view.problem.sentence = kSignUpIsClosed;
    if (fieldIn(call.query, "done") == "reset")
        view.notice = "Your new password is saved. Sign in with it.";
    if (fieldIn(call.query, "done") == "out") view.notice = "You are signed out.";
    return visit.page(signInPage(view));
}

/// The sign-in that the browser had until now is of no more use to anybody.
ApiReply enter(const Site& site, const Visit& visit, const SignInTarget& target,
               const std::string& secret) {
    if (const auto& former = visit.identity()) site.web.endSignIn(*former, former->owner.familyId);
    return visit.signedInto(addressOf(target), secret);
}

ApiReply signIn(const Site& site, const PageCall& call) {
    const Visit visit(site.web, call);
    visit.checkStrangersForm();
    const Credentials typed{.email = visit.typed("email"), .password = visit.typed("password")};
    try {
        if (isSignUp(call.form) && !canSignUp(site, visit)) throw ApiError(403, kSignUpIsClosed);
        const std::string secret = isSignUp(call.form) ? site.web.signUp(typed, visit.origin())
                                                       : site.web.signIn(typed, visit.origin());
        return enter(site, visit, targetIn(call.form), secret);
    } catch (const ApiError& error) {
        SignInView view = signInViewOf(visit, call.form);
        view.email = typed.email;
        view.problem = problemFor(error);
        return visit.page(signInPage(view), error);
    }
}

ApiReply continueHere(const Site& site, const PageCall& call) {
    const Visit visit(site.web, call);
    visit.checkStrangersForm();
    if (!visit.isOwnersBrowser()) {
        throw ApiError(403, "Only the user who runs the Vorq gateway, on the same computer, can "
                            "continue without a password.");
    }
    return enter(site, visit, targetIn(call.form),
                 site.web.continueHere(site.loginName, visit.origin()));
}

} // namespace

void addSignInPages(RequestRouter& router, const Site& site) {
    router.addPage("GET", "/signin.html",
                   {.page = [&site](const PageCall& call) { return showSignIn(site, call); }});
    router.addPage(
        "POST", "/signin.html",
        {.page = [&site](const PageCall& call) { return signIn(site, call); }, .hashes = true});
    router.addPage("POST", "/auth/this-computer",
                   {.page = [&site](const PageCall& call) { return continueHere(site, call); }});
}

} // namespace vorq::gateway
