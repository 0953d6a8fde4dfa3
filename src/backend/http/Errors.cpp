#include "backend/http/Errors.h"

namespace vorq {

using namespace Qt::StringLiterals;

BackendError::BackendError(QString message)
    : m_message(std::move(message)), m_utf8(m_message.toUtf8()) {}

ServiceError ServiceError::requestFailed(QString message, std::optional<int> status,
                                         QString field) {
    return {Kind::RequestFailed, std::move(message), status, std::move(field)};
}

ServiceError ServiceError::notSignedIn() {
    return {Kind::NotSignedIn, u"Your session expired. Sign in again."_s};
}

ServiceError ServiceError::invalidResponse() {
    return {Kind::InvalidResponse, u"The server returned a response Vorq could not read."_s};
}

SignInError SignInError::missingAuthorizeURL(const QString& label) {
    return {Kind::MissingAuthorizeURL, u"Could not start "_s + label + u" sign-in."_s};
}

SignInError SignInError::missingAuthCode(const QString& label) {
    return {Kind::MissingAuthCode, label + u" sign-in did not return an auth code."_s};
}

SignInError SignInError::timedOut(const QString& label) {
    return {Kind::TimedOut, label + u" sign-in timed out. Try again."_s};
}

SignInError SignInError::failed(QString message) {
    return {Kind::Failed, std::move(message)};
}

SignInError SignInError::cancelled() {
    return {Kind::Cancelled, u"Sign-in was cancelled."_s};
}

OperationCancelled::OperationCancelled() : BackendError(u"The operation was cancelled."_s) {}

} // namespace vorq
