#include "pages/HandoffPages.h"
#include "pages/SignInPages.h"
#include "support/LoopbackSockets.h"
#include "web/Site.h"
#include "web/Visit.h"

namespace vorq::gateway {
namespace {

constexpr auto kScheme = "vorq://auth/callback?";

SignInTarget handoffTarget(const PageCall& call) {
    return {.next = "/auth/mac-handoff.html",
            .client = fieldIn(call.query, "client") == "macos" ? "macos" : ""};
}

/// Leads back to the program with `answer`, the query of its address. On this computer the browser
/// is sent to the listener only if that is there and of the same user: a port is open to every user
/// of a computer. Of other computers nothing is known, so the page that sends it shows the other
/// way as well.
ApiReply leadBack(const Site& site, const PageCall& call, const Visit& visit,
                  const std::string& answer, const std::string& email) {
    HandoffView view{.email = email, .schemeAddress = kScheme + answer};
    const std::string listener =
        "http://127.0.0.1:" + std::to_string(site.clientPort) + "/callback?" + answer;
    const bool isForProgram = handoffTarget(call).isForProgram();
    if (isForProgram && call.isFromHere) {
        const std::optional<uid_t> user = listeningUser(site.clientPort);
        if (user && user == peerUser(call.request.peer, call.request.own))
            return redirection(listener);
    } else if (isForProgram) {
        view.listenerAddress = listener;
    }
    return visit.page(handoffPage(view));
}

/// Whether another page has led the browser here.
bool isLedHere(const HttpRequest& request) {
    return !request.fetchSite.empty() && request.fetchSite != "same-origin" &&
           request.fetchSite != "none";
}

ApiReply handOff(const Site& site, const PageCall& call) {
    const Visit visit(site.web, call);
    const SignInTarget target = handoffTarget(call);
    if (!visit.identity()) return redirection(signInAddress(target, false));
    const Identity& identity = visit.requiredIdentity();
    const std::string& email = identity.account.email;
    if (isLedHere(call.request)) return visit.page(confirmHandoffPage(email, target.client));
    const std::string code = site.web.createHandoff(identity);
    return leadBack(site, call, visit, "handoff=" + code, email);
}

ApiReply decline(const Site& site, const PageCall& call) {
    return leadBack(site, call, Visit(site.web, call),
                    "error=access_denied&error_description=Sign-in+was+cancelled.", {});
}

} // namespace

void addHandoffPages(RequestRouter& router, const Site& site) {
    router.addPage("GET", "/auth/mac-handoff.html",
                   {.page = [&site](const PageCall& call) { return handOff(site, call); }});
    router.addPage("GET", "/auth/mac-cancel.html",
                   {.page = [&site](const PageCall& call) { return decline(site, call); }});
}

} // namespace vorq::gateway
