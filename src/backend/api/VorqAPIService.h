#pragma once

#include "backend/api/AIAnalysis.h"
#include "backend/api/AnalysisStream.h"
#include "backend/api/HttpOutcome.h"
#include "backend/api/ModelList.h"
#include "backend/api/Requests.h"
#include "backend/api/Session.h"
#include "backend/api/StudyRecords.h"
#include "backend/http/HttpTransport.h"

#include <functional>

namespace vorq {

class AppPaths;

/// The text without white space at its ends; throws ServiceError::notSignedIn if nothing is left.
[[nodiscard]] QString resolvedAIToken(const QString& token);

/// Every call to the backend. It keeps no session: the token comes with each call.
///
/// Calls throw ServiceError. A call that is stopped ends at once: a stream with
/// OperationCancelled, any other as if the backend could not be reached, so a caller looks at its
/// stop token before it shows an error. A call that is under way outlives the service; it
/// fails when the transport goes. Main thread only.
class VorqAPIService {
  public:
    using OnDelta = AnalysisStream::OnDelta;
    using Seconds = std::chrono::seconds;

    /// The base URL is asked for with each call.
    VorqAPIService(HttpTransport& transport, std::function<QString()> baseURL);
    /// Finds the base URL in the environment and the sidecar files.
    VorqAPIService(HttpTransport& transport, const AppPaths& paths);

    [[nodiscard]] QString baseURL() const { return m_baseURL(); }
    /// The path on the backend, nothing if it is no path. A leading slash may be missing.
    [[nodiscard]] std::optional<QUrl> endpointURL(const QString& path) const;

    /// The page of the website for a sign-in in the browser. The modes "sign-up", "create" and
    /// "signup" begin with a new account.
    [[nodiscard]] QUrl websiteSignInURL(const QString& mode) const;

    /// The streamed reply to a body that asks for one. onDelta gets the whole reply so far with
    /// each event, one after the other. An error of the connection while the reply arrives is
    /// thrown as TransferError.
    QCoro::Task<AIAnalysis> streamAnalysis(QString path, QByteArray body, QString token,
                                           Clock::Duration timeout, OnDelta onDelta,
                                           std::stop_token stop);
    QCoro::Task<AIAnalysis> streamAnalysis(const PromptRequest& request, const QString& token,
                                           OnDelta onDelta, std::stop_token stop);
    QCoro::Task<AIAnalysis> streamAnalysis(const AnalyzeRequest& request, const QString& token,
                                           OnDelta onDelta, std::stop_token stop);

    QCoro::Task<AIAnalysis> prompt(const QString& token, const PromptRequest& request,
                                   std::stop_token stop);
    QCoro::Task<FlashcardsResult> flashcards(const QString& token, const QString& text,
                                             std::stop_token stop);
    /// A blank focus is left out.
    QCoro::Task<QuizResult> quiz(const QString& token, const QString& text, const QString& focus,
                                 std::stop_token stop);

    QCoro::Task<ModelList> models(const QString& token, std::stop_token stop);

    QCoro::Task<Session> refreshSession(const QString& refreshToken, std::stop_token stop);
    QCoro::Task<Session> exchangeMacHandoff(const QString& code, std::stop_token stop);
    QCoro::Task<Session> updateProfile(const QString& token, const QString& firstName,
                                       const QString& lastName, const QString& username,
                                       std::stop_token stop);
    QCoro::Task<Session> updatePreferredModel(const QString& token, const QString& preferredModel,
                                              std::stop_token stop);
    QCoro::Task<Session> updatePrivacy(const QString& token, const QString& email,
                                       const QString& currentPassword, const QString& newPassword,
                                       std::stop_token stop);
    /// Never throws; a blank token calls nothing.
    QCoro::Task<> signOut(QString token, std::stop_token stop);

    /// Any call whose whole response is one record.
    template<typename Record>
    QCoro::Task<Record> request(QString path, QByteArray method, std::optional<QByteArray> body,
                                QString token, Clock::Duration timeout,
                                std::optional<Record> (*decode)(QByteArrayView),
                                std::stop_token stop);

  private:
    struct Reply {
        int status = 0;
        QByteArray body;
        QString baseURL;
    };

    QCoro::Task<Session> post(QStringView path, QByteArray body, const QString& token,
                              std::stop_token stop);
    QCoro::Task<Reply> send(QString path, QByteArray method, std::optional<QByteArray> body,
                            QString token, Clock::Duration timeout, std::stop_token stop);

    HttpTransport& m_transport;
    std::function<QString()> m_baseURL;
};

template<typename Record>
QCoro::Task<Record>
VorqAPIService::request(QString path, QByteArray method, std::optional<QByteArray> body,
                        QString token, Clock::Duration timeout,
                        std::optional<Record> (*decode)(QByteArrayView), std::stop_token stop) {
    const Reply reply = co_await send(path, method, body, token, timeout, stop);
    co_return recordFromResponse(reply.status, reply.body, reply.baseURL, decode);
}

} // namespace vorq
