#pragma once

#include "backend/account/SessionRefresh.h"
#include "backend/account/VorqSessionStore.h"
#include "backend/http/Errors.h"
#include "support/async/TaskSlot.h"

#include <QObject>
#include <QPointer>

#include <optional>
#include <type_traits>

namespace vorq {

class Clock;
class VorqAPIService;

/// The access token of the session, and how another takes its place: by a refresh, or because
/// another program of the user has stored one. Calls that need the token are made through here.
///
/// Operations in flight end by themselves when the object is destroyed. Main thread only.
class SessionTokens final : public QObject {
    Q_OBJECT

  public:
    /// The references must outlive the object.
    SessionTokens(VorqAPIService& api, VorqSessionStore& store, Clock& clock);
    ~SessionTokens() override;

    /// The bearer token, empty when signed out.
    [[nodiscard]] const QString& sessionToken() const { return m_token; }
    void hold(const QString& token) { m_token = token; }

    /// Counts sessions begun and ended, so that late outcomes are known as such.
    [[nodiscard]] quint64 sessionNumber() const { return m_sessionNumber; }
    /// The session begins or ends: what was under way belongs to the former and is dropped.
    void leaveSession();

    /// Refreshes from a later turn of the event loop on.
    void refreshSoon();
    /// Gives whether there are new tokens now. A call while another is under way shares its
    /// outcome. Stopping ends the wait only: the new tokens of a refresh are never lost.
    QCoro::Task<bool> refreshAccessTokenIfNeeded(std::stop_token stop = {});
    /// Waits until no answer to a refresh is under way, for a program that is about to end.
    QCoro::Task<> refreshSettled(std::stop_token stop = {});

    /// Runs the operation, a callable from token to QCoro::Task<T>, with the session's token; if
    /// that is refused, refreshes it and runs the operation once more. A session whose refresh is
    /// refused is expired; one whose refresh fails for now stays, and that failure is thrown.
    /// Throws what the operation throws, and OperationCancelled.
    template<typename Operation>
    std::invoke_result_t<Operation&, QString> withFreshSessionToken(Operation operation,
                                                                    std::stop_token stop = {});

  Q_SIGNALS:
    /// Another token is held now: what is stored with it, and the response if it came by a refresh
    /// of this program.
    void replaced(const vorq::VorqSessionStore::Record& stored,
                  const std::optional<vorq::Session>& session);
    /// The token is refused, and there is no other.
    void expired();

  private:
    /// What was tried for a call that was refused.
    struct Recovery {
        bool isRenewed = false;
        int adoptions = 0;
    };

    void adopt(const VorqSessionStore::Record& stored, const std::optional<Session>& session);
    /// Ends with another token than the refused one in its place, or throws.
    QCoro::Task<> replaceRefused(QString token, Recovery& recovery, std::stop_token stop);
    /// After a refused token could not be replaced. Gives whether another stands in its place.
    bool expireUnlessReplaced(const QString& refusedToken);
    static QCoro::Task<> runSoon(QPointer<SessionTokens> self, std::stop_token stop);

    VorqSessionStore& m_store;
    QString m_token;
    quint64 m_sessionNumber = 0;
    SessionRefresh m_refresh;
    TaskSlot m_soon;
};

template<typename Operation>
std::invoke_result_t<Operation&, QString>
SessionTokens::withFreshSessionToken(Operation operation, std::stop_token stop) {
    const QPointer<SessionTokens> self(this);
    const QString user = m_store.read().email;
    for (Recovery recovery;;) {
        const QString token = m_token;
        try {
            co_return co_await operation(token);
        } catch (const ServiceError& error) {
            if (error.kind() != ServiceError::Kind::NotSignedIn) throw;
        }
        if (!self || stop.stop_requested()) throw OperationCancelled();
        co_await replaceRefused(token, recovery, stop);
        if (!self || stop.stop_requested()) throw OperationCancelled();
        // What one user asked never goes out as another.
        if (!user.isEmpty() && m_store.isOfAnotherUser(user)) throw ServiceError::notSignedIn();
    }
}

} // namespace vorq
