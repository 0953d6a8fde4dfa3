#include "pages/ResetPages.h"
#include "web/Site.h"
#include "web/Visit.h"

namespace vorq::gateway {
namespace {

ApiReply showForgot(const Site& site, const PageCall& call) {
    const Visit visit(site.web, call);
    return visit.page(forgotPage({.token = visit.strangersToken()}));
}

ApiReply askForLink(const Site& site, const PageCall& call) {
    const Visit visit(site.web, call);
    visit.checkStrangersForm();
    ForgotView view{.token = visit.strangersToken(), .email = visit.typed("email")};
    try {
        if (const auto code = site.resets.request(view.email, call.sender)) site.tellReset(*code);
        view.isAsked = true;
        return visit.page(forgotPage(view));
    } catch (const ApiError& error) {
        view.problem = problemFor(error);
        return visit.page(forgotPage(view), error);
    }
}

ApiReply showReset(const Site& site, const PageCall& call) {
    const Visit visit(site.web, call);
    const std::string code = fieldIn(call.query, "code");
    if (!site.resets.holds(code))
        throw ApiError(400, "This link has expired or was already used. Ask for another one.");
    return visit.page(resetPage({.token = visit.strangersToken(), .code = code}));
}

ApiReply savePassword(const Site& site, const PageCall& call) {
    const Visit visit(site.web, call);
    visit.checkStrangersForm();
    ResetView view{.token = visit.strangersToken(), .code = visit.typed("code")};
    try {
        site.resets.replace(view.code, visit.typed("newPassword"));
        return visit.signedInto("/signin.html?done=reset", {});
    } catch (const ApiError& error) {
        if (error.field.empty()) throw;
        view.problem = problemFor(error);
        return visit.page(resetPage(view), error);
    }
}

} // namespace

void addResetPages(RequestRouter& router, const Site& site) {
    router.addPage("GET", "/forgot.html",
                   {.page = [&site](const PageCall& call) { return showForgot(site, call); }});
    router.addPage("POST", "/forgot.html",
                   {.page = [&site](const PageCall& call) { return askForLink(site, call); }});
    router.addPage("GET", "/reset.html",
                   {.page = [&site](const PageCall& call) { return showReset(site, call); }});
    router.addPage("POST", "/reset.html",
                   {.page = [&site](const PageCall& call) { return savePassword(site, call); },
                    .hashes = true});
}

} // namespace vorq::gateway
