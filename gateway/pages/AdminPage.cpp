#include "pages/AdminPage.h"

#include "pages/PageFrame.h"

namespace vorq::gateway {
namespace {

Markup overridingNotice(const std::vector<std::string>& names) {
    if (names.empty()) return {};
    std::string all;
    for (const std::string& name : names)
        all += (all.empty() ? "" : ", ") + name;
    return Markup::element("p", {{"class", "notice bad"}},
                           "The environment of vorq-gateway wins over what is saved here: " + all +
                               ".");
}

Markup keyFields(const AdminView& view) {
    Markup fields = inputField({.name = "key",
                                .label = "Key",
                                .type = "password",
                                .autocomplete = "off",
                                .hint = view.hasKey ? "A key is saved, and is never shown. Leave "
                                                      "this empty to keep it."
                                                    : "Empty where the provider wants none."},
                               view.problem);
    if (view.hasKey) fields += checkField("removeKey", "Remove the saved key");
    return fields + inputField({.name = "keyHeader",
                                .label = "Header of the key",
                                .value = view.keyHeader,
                                .hint = "Empty for a bearer token, or a name such as api-key."},
                               view.problem);
}

Markup providerForm(const AdminView& view) {
    const Markup content =
        inputField({.name = "url",
                    .label = "Address of the provider",
                    .type = "url",
                    .autocomplete = "url",
                    .value = view.url,
                    .hint = "Any with an OpenAI-compatible API, such as http://localhost:11434. "
                            "Empty for replies without a model."},
                   view.problem) +
        keyFields(view) +
        inputField({.name = "model",
                    .label = "Model",
                    .value = view.model,
                    .hint = "For every request that names no model listed below."},
                   view.problem) +
        textArea({.name = "models",
                  .label = "Models by name",
                  .value = view.models,
                  .hint = "One a line: the model that Vorq asks for = the provider's own."},
                 view.problem);
    const Markup actions =
        button({.text = "Test connection", .name = "action", .value = "test"}) +
        button({.text = "Save", .kind = "primary", .name = "action", .value = "save"});
    return postForm("/admin.html", view.token,
                    content + Markup::element("div", {{"class", "actions"}}, actions));
}

} // namespace

std::string adminPage(const AdminView& view) {
    const Markup content =
        Markup::element("h1", {}, "Model and provider") +
        Markup::element("p", {},
                        Markup("Saved in ") + Markup::element("code", {}, view.settingsFile)) +
        notice(view.notice) + formNotice(view.problem) + overridingNotice(view.overriding) +
        Markup::element("div", {{"class", "card"}}, providerForm(view));
    const Markup links = link("/account.html", "Your account") +
                         Markup::element("a", {{"href", "/admin.html"}, {"aria-current", "page"}},
                                         "Model and provider");
    return documentOf(
        {.title = "Model and provider", .main = content, .navigation = links, .isWide = true});
}

} // namespace vorq::gateway
