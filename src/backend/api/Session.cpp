#include "backend/api/Session.h"

#include "support/json/JsonWriter.h"
#include "support/json/StrictJson.h"

namespace vorq {

static bool read(strict_json::Element element, Session& session) {
    using namespace strict_json;
    Object object;
    return element.get(object) == simdjson::SUCCESS &&
           readRequired(object, "signedIn", session.signedIn) &&
           readRequired(object, "email", session.email) &&
           readRequired(object, "token", session.token) &&
           readIfPresent(object, "refreshToken", session.refreshToken) &&
           readIfPresent(object, "firstName", session.firstName) &&
           readIfPresent(object, "lastName", session.lastName) &&
           readIfPresent(object, "username", session.username) &&
           readIfPresent(object, "useCase", session.useCase) &&
           readIfPresent(object, "preferredModel", session.preferredModel) &&
           readIfPresent(object, "needsEmailConfirmation", session.needsEmailConfirmation) &&
           readIfPresent(object, "message", session.message);
}

std::optional<Session> decodeSession(QByteArrayView json) {
    return strict_json::decodeDocument<Session>(json);
}

void encode(const Session& session, JsonWriter& writer) {
    const auto optional = [&writer](QStringView key, const auto& value) {
        if (value) writer.member(key, *value);
    };
    writer.beginObject();
    writer.member(u"signedIn", session.signedIn);
    writer.member(u"email", session.email);
    writer.member(u"token", session.token);
    optional(u"refreshToken", session.refreshToken);
    optional(u"firstName", session.firstName);
    optional(u"lastName", session.lastName);
    optional(u"username", session.username);
    optional(u"useCase", session.useCase);
    optional(u"preferredModel", session.preferredModel);
    optional(u"needsEmailConfirmation", session.needsEmailConfirmation);
    optional(u"message", session.message);
    writer.endObject();
}

} // namespace vorq
