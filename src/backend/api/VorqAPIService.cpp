#include "backend/api/VorqAPIService.h"

#include "backend/api/BaseURL.h"
#include "backend/http/Errors.h"
#include "support/json/JsonWriter.h"
#include "support/text/Text.h"

#include <initializer_list>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr qsizetype longestBody = qsizetype{64} << 20;
constexpr qsizetype longestStreamErrorBody = 8192;

QByteArray jsonObject(std::initializer_list<std::pair<QStringView, QStringView>> members) {
    JsonWriter writer;
    writer.beginObject();
    for (const auto& [key, text] : members)
        writer.member(key, text);
    writer.endObject();
    return writer.take();
}

HttpRequest makeRequest(const QString& baseURL, const QString& path, const QByteArray& method,
                        std::optional<QByteArray> body, const QString& token,
                        Clock::Duration timeout) {
    const std::optional<QUrl> url = endpointURL(baseURL, path);
    if (!url) throw ServiceError::requestFailed(u"Invalid API URL for "_s + path + u'.');
    HttpRequest request{.url = *url,
                        .method = method,
                        .headers = {{"Content-Type", "application/json"}},
                        .body = std::move(body),
                        .timeout = timeout};
    if (!token.isEmpty()) request.headers.emplace_back("Authorization", "Bearer " + token.toUtf8());
    return request;
}

// Ends early once more than the limit is in hand. If it throws, the body is what came before.
QCoro::Task<> readBody(HttpResponse& response, qsizetype limit, QByteArray& body,
                       std::stop_token stop) {
    while (body.size() <= limit) {
        const QByteArray bytes = co_await response.read(stop);
        if (bytes.isEmpty()) break;
        body += bytes;
    }
}

// Whether a body that was cut short says all the same why the request was refused.
bool tellsRefusal(int status, QByteArrayView body) {
    return !isSuccess(status) && (status == 401 || parseErrorMessage(body));
}

QCoro::Task<AIAnalysis> readReply(HttpResponse& response, VorqAPIService::OnDelta onDelta,
                                  std::stop_token stop) {
    AnalysisStream stream(std::move(onDelta), stop);
    while (true) {
        const QByteArray bytes = co_await response.read(stop);
        if (bytes.isEmpty() || stream.feed(bytes)) co_return stream.finish();
    }
}

} // namespace

QString resolvedAIToken(const QString& token) {
    const QStringView resolved = trimmed(token);
    if (resolved.isEmpty()) throw ServiceError::notSignedIn();
    return resolved.toString();
}

VorqAPIService::VorqAPIService(HttpTransport& transport, std::function<QString()> baseURL)
    : m_transport(transport), m_baseURL(std::move(baseURL)) {}

VorqAPIService::VorqAPIService(HttpTransport& transport, const AppPaths& paths)
    : VorqAPIService(transport, [&paths] { return resolveBaseURL(readBaseURLCandidates(paths)); }) {
}

std::optional<QUrl> VorqAPIService::endpointURL(const QString& path) const {
    return vorq::endpointURL(baseURL(), path);
}

QUrl VorqAPIService::websiteSignInURL(const QString& mode) const {
    return QUrl(vorq::websiteSignInURL(baseURL(), mode));
}

QCoro::Task<AIAnalysis> VorqAPIService::streamAnalysis(QString path, QByteArray body, QString token,
                                                       Clock::Duration timeout, OnDelta onDelta,
                                                       std::stop_token stop) {
    // After the first wait the service may be gone.
    const QString base = baseURL();
    HttpRequest request = makeRequest(base, path, "POST", body, token, timeout);
    request.headers.emplace_back("Accept", "text/event-stream");
    std::unique_ptr<HttpResponse> response;
    try {
        response = co_await m_transport.open(std::move(request), stop);
    } catch (const OperationCancelled&) {
        throw;
    } catch (const std::exception&) {
        throw unreachable(base);
    }
    const std::optional<int> status = response->status();
    if (!status) throw ServiceError::invalidResponse();
    if (!isSuccess(*status)) {
        // Whatever its body says is dropped, and it may be cut short or never end.
        if (*status == 401) throw ServiceError::notSignedIn();
        QByteArray error;
        try {
            co_await readBody(*response, longestStreamErrorBody, error, stop);
        } catch (const TransferError&) {
            if (!tellsRefusal(*status, error)) throw;
        }
        throw refusal(*status, QByteArrayView(error).first(
                                   std::min(error.size(), longestStreamErrorBody + 1)));
    }
    co_return co_await readReply(*response, std::move(onDelta), stop);
}

QCoro::Task<AIAnalysis> VorqAPIService::streamAnalysis(const PromptRequest& request,
                                                       const QString& token, OnDelta onDelta,
                                                       std::stop_token stop) {
    return streamAnalysis(PromptRequest::path.toString(), encode(request), resolvedAIToken(token),
                          request.timeout(), std::move(onDelta), std::move(stop));
}

QCoro::Task<AIAnalysis> VorqAPIService::streamAnalysis(const AnalyzeRequest& request,
                                                       const QString& token, OnDelta onDelta,
                                                       std::stop_token stop) {
    return streamAnalysis(AnalyzeRequest::path.toString(), encode(request), resolvedAIToken(token),
                          AnalyzeRequest::timeout, std::move(onDelta), std::move(stop));
}

QCoro::Task<AIAnalysis> VorqAPIService::prompt(const QString& token, const PromptRequest& asked,
                                               std::stop_token stop) {
    return request(PromptRequest::path.toString(), "POST", encode(asked), resolvedAIToken(token),
                   asked.timeout(), &decodeAIAnalysis, std::move(stop));
}

QCoro::Task<FlashcardsResult> VorqAPIService::flashcards(const QString& token, const QString& text,
                                                         std::stop_token stop) {
    return request(u"/ai/flashcards"_s, "POST", jsonObject({{u"text", text}}),
                   resolvedAIToken(token), 90s, &decodeFlashcardsResult, std::move(stop));
}

QCoro::Task<QuizResult> VorqAPIService::quiz(const QString& token, const QString& text,
                                             const QString& focus, std::stop_token stop) {
    const QByteArray body = trimmed(focus).isEmpty()
                                ? jsonObject({{u"text", text}})
                                : jsonObject({{u"text", text}, {u"focus", focus}});
    return request(u"/ai/quiz"_s, "POST", body, resolvedAIToken(token), 90s, &decodeQuizResult,
                   std::move(stop));
}

QCoro::Task<ModelList> VorqAPIService::models(const QString& token, std::stop_token stop) {
    return request(u"/ai/models"_s, "GET", std::nullopt, resolvedAIToken(token), 20s,
                   &decodeModelList, std::move(stop));
}

QCoro::Task<Session> VorqAPIService::refreshSession(const QString& refreshToken,
                                                    std::stop_token stop) {
    const QStringView token = trimmed(refreshToken);
    if (token.isEmpty()) throw ServiceError::notSignedIn();
    return post(u"/auth/refresh", jsonObject({{u"refreshToken", token}}), {}, std::move(stop));
}

QCoro::Task<Session> VorqAPIService::exchangeMacHandoff(const QString& code, std::stop_token stop) {
    const QStringView resolved = trimmed(code);
    if (resolved.isEmpty())
        throw ServiceError::requestFailed(u"Sign-in did not return a session."_s);
    return post(u"/auth/mac-handoff/exchange", jsonObject({{u"code", resolved}}), {},
                std::move(stop));
}

QCoro::Task<Session> VorqAPIService::updateProfile(const QString& token, const QString& firstName,
                                                   const QString& lastName, const QString& username,
                                                   std::stop_token stop) {
    return post(
        u"/auth/profile",
        jsonObject({{u"firstName", firstName}, {u"lastName", lastName}, {u"username", username}}),
        token, std::move(stop));
}

QCoro::Task<Session> VorqAPIService::updatePreferredModel(const QString& token,
                                                          const QString& preferredModel,
                                                          std::stop_token stop) {
    return post(u"/auth/profile", jsonObject({{u"preferredModel", preferredModel}}),
                resolvedAIToken(token), std::move(stop));
}

QCoro::Task<Session> VorqAPIService::updatePrivacy(const QString& token, const QString& email,
                                                   const QString& currentPassword,
                                                   const QString& newPassword,
                                                   std::stop_token stop) {
    return post(u"/auth/privacy",
                jsonObject({{u"email", email},
                            {u"currentPassword", currentPassword},
                            {u"newPassword", newPassword}}),
                token, std::move(stop));
}

QCoro::Task<> VorqAPIService::signOut(QString token, std::stop_token stop) {
    if (trimmed(token).isEmpty()) co_return;
    try {
        co_await send(u"/auth/sign-out"_s, "POST", std::nullopt, token, 15s, stop);
    } catch (const std::exception& error) {
        static_cast<void>(error); // signing out works without the backend
    }
}

QCoro::Task<Session> VorqAPIService::post(QStringView path, QByteArray body, const QString& token,
                                          std::stop_token stop) {
    return request(path.toString(), "POST", std::move(body), token, 30s, &decodeSession,
                   std::move(stop));
}

QCoro::Task<VorqAPIService::Reply> VorqAPIService::send(QString path, QByteArray method,
                                                        std::optional<QByteArray> body,
                                                        QString token, Clock::Duration timeout,
                                                        std::stop_token stop) {
    // After the first wait the service may be gone.
    Reply reply;
    reply.baseURL = baseURL();
    HttpRequest request = makeRequest(reply.baseURL, path, method, body, token, timeout);
    std::unique_ptr<HttpResponse> response;
    try {
        response = co_await m_transport.open(std::move(request), stop);
        if (response->status()) co_await readBody(*response, longestBody, reply.body, stop);
    } catch (const std::exception&) {
        const bool isTold = response && response->status() && !stop.stop_requested() &&
                            tellsRefusal(*response->status(), reply.body);
        if (!isTold) throw unreachable(reply.baseURL);
    }
    const std::optional<int> status = response->status();
    if (!status) throw ServiceError::invalidResponse();
    reply.status = *status;
    if (reply.body.size() > longestBody) {
        if (isSuccess(reply.status)) throw ServiceError::invalidResponse();
        reply.body.clear();
    }
    co_return reply;
}

} // namespace vorq
