#include "backend/api/HttpOutcome.h"

#include "support/json/StrictJson.h"
#include "support/text/Text.h"

#include <QUrl>

namespace vorq {

using namespace Qt::StringLiterals;

namespace {

struct APIErrorBody {
    std::optional<QString> error;
    std::optional<QString> code;
    std::optional<QString> field;
};

bool read(strict_json::Element element, APIErrorBody& body) {
    strict_json::Object object;
    if (element.get(object) != simdjson::SUCCESS ||
        !strict_json::readIfPresent(object, "error", body.error) ||
        !strict_json::readIfPresent(object, "code", body.code))
        return false;
    // Whatever else it is, the sentence holds without it.
    if (!strict_json::readIfPresent(object, "field", body.field)) body.field.reset();
    return true;
}

std::optional<QString> sentenceOf(const std::optional<APIErrorBody>& document) {
    if (!document || !document->error) return std::nullopt;
    const QStringView sentence = trimmed(*document->error);
    if (sentence.isEmpty()) return std::nullopt;
    return sentence.toString();
}

bool isOfThisComputer(const QString& baseURL) {
    const QString host = QUrl(baseURL).host();
    return host == u"localhost" || host == u"::1" || host.startsWith(u"127.");
}

} // namespace

std::optional<QString> parseErrorMessage(QByteArrayView body) {
    return sentenceOf(strict_json::decodeDocument<APIErrorBody>(body));
}

bool isSuccess(int status) {
    return status >= 200 && status <= 299;
}

ServiceError refusal(int status, QByteArrayView body) {
    if (status == 401) return ServiceError::notSignedIn();
    const QString byStatus = u"Request failed with status "_s + QString::number(status) + u'.';
    const auto document = strict_json::decodeDocument<APIErrorBody>(body);
    return ServiceError::requestFailed(sentenceOf(document).value_or(byStatus), status,
                                       document ? document->field.value_or(QString()) : QString());
}

ServiceError unreachable(const QString& baseURL) {
    QString sentence = u"Could not reach Vorq at "_s + baseURL +
                       u". Check your connection, or set VORQ_API_BASE_URL."_s;
    if (isOfThisComputer(baseURL)) sentence += u" To start it here: vorq-gateway serve"_s;
    return ServiceError::requestFailed(sentence);
}

ServiceError unreadable(QByteArrayView body, const QString& baseURL) {
    const QString text = QString::fromUtf8(body);
    if (trimmed(text).startsWith(u'<')) {
        return ServiceError::requestFailed(u"Vorq reached a web page instead of the API at "_s +
                                           baseURL + u". Check VORQ_API_BASE_URL."_s);
    }
    return ServiceError::requestFailed(
        parseErrorMessage(body).value_or(ServiceError::invalidResponse().message()));
}

} // namespace vorq
