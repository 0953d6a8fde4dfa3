#include "pages/HandoffPages.h"

#include "pages/FormParts.h"
#include "pages/PageFrame.h"

namespace vorq::gateway {

std::string handoffPage(const HandoffView& view) {
    const bool isDeclined = view.email.empty();
    Markup content =
        Markup::element("h1", {}, isDeclined ? "Sign-in was cancelled" : "Almost there") +
        Markup::element("p", {},
                        isDeclined ? Markup("Vorq stays signed out. You can close this page.")
                                   : Markup("You are signed in as ") +
                                         Markup::element("strong", {}, view.email) +
                                         Markup(". Vorq takes it from here."));
    content += Markup::element(
        "p", {{"class", "actions"}},
        Markup::element("a", {{"class", "button primary"}, {"href", view.schemeAddress}},
                        isDeclined ? "Back to Vorq" : "Open Vorq"));
    if (!isDeclined) {
        content += Markup::element("p", {{"class", "hint"}},
                                   "The link holds for five minutes and works once.");
    }
    return documentOf({.title = isDeclined ? "Cancelled" : "Open Vorq",
                       .main = Markup::element("div", {{"class", "card"}}, content),
                       .next = view.listenerAddress});
}

std::string confirmHandoffPage(const std::string& email, const std::string& client) {
    const Markup content =
        Markup::element("h1", {}, "Sign in to Vorq") +
        Markup::element("p", {},
                        Markup("Vorq on this device will be signed in as ") +
                            Markup::element("strong", {}, email) + Markup(".")) +
        Markup::element("div", {{"class", "actions"}},
                        plainForm("/auth/mac-handoff.html",
                                  hiddenField("client", client) +
                                      button({.text = "Continue", .kind = "primary"})) +
                            plainForm("/auth/mac-cancel.html",
                                      hiddenField("client", client) + button({.text = "Cancel"})));
    return documentOf(
        {.title = "Sign in to Vorq", .main = Markup::element("div", {{"class", "card"}}, content)});
}

} // namespace vorq::gateway
