#include "web/Site.h"

#include "pages/PageFrame.h"
#include "web/Visit.h"

namespace vorq::gateway {
namespace {

ApiReply fileReply(const char* contentType, std::string body) {
    return {.answer = HttpAnswer{.contentType = contentType, .body = std::move(body)}};
}

} // namespace

void addPages(RequestRouter& router, const Site& site) {
    const auto addFile = [&](const char* path, auto reply) {
        router.addPage("GET", path, {.page = [reply](const PageCall&) { return reply(); }});
    };
    addFile(kStylePath, [] { return fileReply("text/css; charset=utf-8", styleSheet()); });
    addFile(kMarkPath, [] { return fileReply("image/svg+xml", markPicture()); });
    addFile("/", [] { return redirection("/account.html"); });
    addSignInPages(router, site);
    addHandoffPages(router, site);
    addAccountPages(router, site);
    addResetPages(router, site);
    addAdminPages(router, site);
}

} // namespace vorq::gateway
