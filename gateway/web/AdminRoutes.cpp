#include "pages/AdminPage.h"
#include "support/Filled.h"
#include "support/Utf8.h"
#include "web/ConnectionTest.h"
#include "web/Site.h"
#include "web/Visit.h"

#include <sstream>

namespace vorq::gateway {
namespace {

void checkAdministrator(const Visit& visit) {
    if (visit.isOwnersBrowser()) return;
    throw ApiError(403, "Only the user who runs the Vorq gateway, on the same computer, can see "
                        "this page.");
}

std::string linesOf(const std::map<std::string, std::string>& models) {
    std::string lines;
    for (const auto& [id, model] : models)
        lines += filled("{} = {}\n", id, model);
    return lines;
}

std::map<std::string, std::string> modelsIn(const std::string& lines) {
    std::map<std::string, std::string> models;
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) {
        if (trimmed(line).empty()) continue;
        const std::size_t equals = line.find('=');
        const std::string id(trimmed(line.substr(0, equals)));
        const std::string model(
            trimmed(equals == std::string::npos ? std::string() : line.substr(equals + 1)));
        if (id.empty() || model.empty())
            throw ApiError(400, "Each line holds a model, \"=\" and another one.", "models");
        if (!models.emplace(id, model).second)
            throw ApiError(400, filled("{} is there twice.", clipped(id, 100)), "models");
    }
    return models;
}

AdminView adminViewOf(const Site& site, const Visit& visit) {
    return {.token = visit.strangersToken(),
            .hasKey = site.provider.hasKey(),
            .settingsFile = site.provider.file().string(),
            .overriding = site.provider.overriding()};
}

/// With what was typed, to be put right or saved. A key is never sent back.
AdminView typedView(const Site& site, const Visit& visit) {
    AdminView view = adminViewOf(site, visit);
    view.url = visit.typed("url");
    view.keyHeader = visit.typed("keyHeader");
    view.model = visit.typed("model");
    view.models = visit.typed("models");
    return view;
}

ApiReply showAdmin(const Site& site, const PageCall& call) {
    const Visit visit(site.web, call);
    checkAdministrator(visit);
    const ProviderEntry entry = site.provider.saved();
    AdminView view = adminViewOf(site, visit);
    view.url = entry.url;
    view.keyHeader = entry.keyHeader;
    view.model = entry.model;
    view.models = linesOf(entry.models);
    if (fieldIn(call.query, "saved") == "yes") view.notice = "Saved. Vorq uses it from now on.";
    return visit.page(adminPage(view));
}

ApiReply testConnection(const Site& site, const AdminView& view, const ProviderEntry& entry) {
    const auto config = site.provider.configOf(entry);
    if (!config) throw ApiError(400, "Enter an address to test.", "url");
    auto show = [view](const std::string& problem) {
        AdminView shown = view;
        if (problem.empty()) {
            shown.notice = "The provider answered. The connection works.";
        } else {
            shown.problem = {.sentence = problem, .field = {}};
        }
        return adminPage(shown);
    };
    return {.stream = std::make_unique<ConnectionTest>(*config, std::move(show))};
}

ApiReply changeProvider(const Site& site, const PageCall& call) {
    const Visit visit(site.web, call);
    checkAdministrator(visit);
    visit.checkStrangersForm();
    AdminView view = typedView(site, visit);
    try {
        const ProviderEntry entry{.url = visit.typed("url"),
                                  .key = visit.typed("key"),
                                  .removesKey = visit.typed("removeKey") == "yes",
                                  .keyHeader = visit.typed("keyHeader"),
                                  .model = visit.typed("model"),
                                  .models = modelsIn(visit.typed("models"))};
        if (visit.typed("action") == "test") return testConnection(site, view, entry);
        site.provider.save(entry);
        return redirection("/admin.html?saved=yes");
    } catch (const ApiError& error) {
        view.problem = problemFor(error);
        return visit.page(adminPage(view), error);
    }
}

} // namespace

void addAdminPages(RequestRouter& router, const Site& site) {
    router.addPage("GET", "/admin.html",
                   {.page = [&site](const PageCall& call) { return showAdmin(site, call); }});
    router.addPage("POST", "/admin.html",
                   {.page = [&site](const PageCall& call) { return changeProvider(site, call); }});
}

} // namespace vorq::gateway
