#include "http/AuthRoutes.h"

#include "http/RequestFields.h"
#include "support/ApiError.h"
#include "support/Utf8.h"

namespace vorq::gateway {
namespace {

ApiReply reply(const Session& session) {
    return {.body = encode(session), .stream = nullptr};
}

std::string secretIn(const ApiCall& call, const char* key) {
    return std::string(trimmed(requiredText(call.body, key)));
}

ProfileChange profileChange(const nlohmann::json& body) {
    return {.firstName = optionalText(body, "firstName"),
            .lastName = optionalText(body, "lastName"),
            .username = optionalText(body, "username"),
            .useCase = optionalText(body, "useCase"),
            .preferredModel = optionalText(body, "preferredModel")};
}

PrivacyChange privacyChange(const nlohmann::json& body) {
    return {.email = optionalText(body, "email").value_or(""),
            .currentPassword = requiredText(body, "currentPassword"),
            .newPassword = optionalText(body, "newPassword").value_or("")};
}

} // namespace

void addAuthRoutes(RequestRouter& router, AccountService& accounts) {
    const auto add = [&](const char* path, bool needsToken, ApiHandler handler) {
        router.add(path, {.handler = std::move(handler), .needsToken = needsToken});
    };
    add("/auth/refresh", false, [&accounts](const ApiCall& call) {
        return reply(accounts.refresh(secretIn(call, "refreshToken")));
    });
    add("/auth/mac-handoff/exchange", false, [&accounts](const ApiCall& call) {
        return reply(accounts.exchangeHandoff(secretIn(call, "code"), call.sender));
    });
    add("/auth/sign-out", true, [&accounts](const ApiCall& call) {
        return reply(accounts.signOut(call.identity.value()));
    });
    add("/auth/profile", true, [&accounts](const ApiCall& call) {
        return reply(accounts.updateProfile(call.identity.value(), profileChange(call.body)));
    });
    // Hashes passwords, which takes long on purpose.
    router.add("/auth/privacy", {.handler =
                                     [&accounts](const ApiCall& call) {
                                         return reply(accounts.updatePrivacy(
                                             call.identity.value(), privacyChange(call.body)));
                                     },
                                 .needsToken = true,
                                 .hashes = true});
}

} // namespace vorq::gateway
