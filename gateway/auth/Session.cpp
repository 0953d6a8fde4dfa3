#include "auth/Session.h"

#include <nlohmann/json.hpp>

namespace vorq::gateway {

nlohmann::json encode(const Session& session) {
    nlohmann::json json = {
        {"signedIn", session.signedIn}, {"email", session.account.email}, {"token", session.token}};
    const auto addUnlessEmpty = [&](const char* key, const std::string& value) {
        if (!value.empty()) json[key] = value;
    };
    addUnlessEmpty("refreshToken", session.refreshToken);
    addUnlessEmpty("message", session.message);
    if (!session.signedIn) return json;
    json["firstName"] = session.account.firstName;
    json["lastName"] = session.account.lastName;
    json["username"] = session.account.username;
    addUnlessEmpty("useCase", session.account.useCase);
    json["preferredModel"] = session.account.preferredModel;
    json["needsEmailConfirmation"] = false;
    return json;
}

} // namespace vorq::gateway
