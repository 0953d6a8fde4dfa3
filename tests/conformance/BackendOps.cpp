#include "backend/account/LoopbackRequest.h"
#include "backend/account/ModelCatalogue.h"
#include "backend/account/SignInUrl.h"
#include "backend/api/AIAnalysis.h"
#include "backend/api/BaseURL.h"
#include "backend/api/HttpOutcome.h"
#include "backend/api/Session.h"
#include "backend/api/StudyRecords.h"
#include "conformance/Ops.h"
#include "support/json/JsonWriter.h"

using namespace Qt::StringLiterals;

namespace vorq::conformance {
namespace {

QJsonValue baseURL(const QJsonObject& in) {
    const QJsonObject environment = objectOf(in, "env");
    const QJsonObject sidecars = objectOf(in, "sidecars");
    const auto contentOf = [&sidecars](const char* name) -> std::optional<QByteArray> {
        if (const auto text = optionalStringOf(sidecars, name)) return text->toUtf8();
        return std::nullopt;
    };
    BaseURLCandidates candidates;
    candidates.vorqVariable = environment["VORQ_API_BASE_URL"].toString();
    candidates.tolvaVariable = environment["TOLVA_API_BASE_URL"].toString();
    candidates.executableSidecar = contentOf("executable");
    candidates.resourcesSidecar = contentOf("resources");
    candidates.homeSidecar = contentOf("home");
    return resolveBaseURL(candidates);
}

template<typename Record>
QJsonValue outcome(const QJsonObject& in, std::optional<Record> (*decode)(QByteArrayView)) {
    const QByteArray body = stringOf(in, "body").toUtf8();
    const Record record = recordFromResponse<Record>(static_cast<int>(integerOf(in, "status")),
                                                     body, stringOf(in, "baseURL"), decode);
    JsonWriter writer;
    encode(record, writer);
    return QJsonObject{{"value", parsed(writer.take())}};
}

QString nameOf(ServiceError::Kind kind) {
    switch (kind) {
    case ServiceError::Kind::RequestFailed:
        return u"requestFailed"_s;
    case ServiceError::Kind::NotSignedIn:
        return u"notSignedIn"_s;
    case ServiceError::Kind::InvalidResponse:
        return u"invalidResponse"_s;
    }
    return {};
}

QJsonValue httpOutcome(const QJsonObject& in) {
    const QString record = stringOf(in, "decode");
    try {
        if (record == u"Session") return outcome(in, decodeSession);
        if (record == u"FlashcardsResult") return outcome(in, decodeFlashcardsResult);
        if (record == u"QuizResult") return outcome(in, decodeQuizResult);
        if (record == u"AIAnalysis") return outcome(in, decodeAIAnalysis);
    } catch (const ServiceError& error) {
        return QJsonObject{{"error", nameOf(error.kind())}, {"message", error.message()}};
    }
    throw MalformedInput("unknown record");
}

QJsonValue modelFromSession(const QJsonObject& in) {
    return vorq::modelFromSession(boolOf(in, "userChosen"), stringOf(in, "current"),
                                  optionalStringOf(in, "preferredModel"),
                                  optionalStringOf(in, "useCase"));
}

QJsonValue queryValue(const QJsonObject& in) {
    const auto value = SignInUrl::queryValue(stringOf(in, "name"), QUrl(stringOf(in, "url")));
    return value ? QJsonValue(*value) : QJsonValue();
}

QJsonValue isOAuthCallback(const QJsonObject& in) {
    return SignInUrl::isOAuthCallback(QUrl(stringOf(in, "url")));
}

QJsonValue websiteSignInURL(const QJsonObject& in) {
    return vorq::websiteSignInURL(stringOf(in, "baseURL"), stringOf(in, "mode"));
}

QJsonValue callbackURL(const QJsonObject& in) {
    const QByteArray request = stringOf(in, "request").toUtf8();
    return LoopbackRequest::callbackURL(request).toString(QUrl::FullyEncoded);
}

} // namespace

void addBackendOps(Ops& ops) {
    ops["baseURL"] = baseURL;
    ops["httpOutcome"] = httpOutcome;
    ops["modelFromSession"] = modelFromSession;
    ops["queryValue"] = queryValue;
    ops["isOAuthCallback"] = isOAuthCallback;
    ops["websiteSignInURL"] = websiteSignInURL;
    ops["callbackURL"] = callbackURL;
}

} // namespace vorq::conformance
