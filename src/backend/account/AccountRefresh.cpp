// Replacing the tokens of a session.

#include "backend/account/AccountSession.h"
#include "backend/account/PreferredModel.h"
#include "backend/api/Session.h"

namespace vorq {

using namespace Qt::StringLiterals;

namespace {

// Other programs can hardly replace a session this often during one call.
constexpr int mostAdoptions = 4;

} // namespace

QCoro::Task<bool> AccountSession::refreshAccessTokenIfNeeded(std::stop_token stop) {
    const SessionRefresh::Outcome outcome = co_await m_refresh.run(m_sessionToken, stop);
    co_return outcome.hasTokens();
}

QCoro::Task<> AccountSession::runLaunchRefresh(QPointer<AccountSession> self,
                                               std::stop_token stop) {
    if (!self || stop.stop_requested()) co_return;
    co_await self->refreshAccessTokenIfNeeded(stop);
}

QCoro::Task<> AccountSession::refreshSettled(std::stop_token stop) {
    // One that has not begun had better not.
    m_launchRefreshTask.cancel();
    return m_refresh.settled(std::move(stop));
}

void AccountSession::adoptTokens(const VorqSessionStore::Record& stored,
                                 const std::optional<Session>& session) {
    const QPointer<AccountSession> self(this);
    adoptStored(stored);
    if (self && session) m_model.applyPreferredModelFromSession(*session);
}

QCoro::Task<> AccountSession::replaceRefused(QString token, Recovery& recovery,
                                             std::stop_token stop) {
    using Kind = SessionRefresh::Outcome::Kind;
    const QPointer<AccountSession> self(this);
    SessionRefresh::Outcome outcome{.kind = Kind::Refused, .failure = {}};
    if (!recovery.isRenewed && m_sessionToken == token) {
        outcome = co_await m_refresh.run(token, stop);
        if (!self || stop.stop_requested()) throw OperationCancelled();
    }
    if (outcome.kind == Kind::Renewed && !m_sessionToken.isEmpty()) {
        recovery.isRenewed = true;
        co_return;
    }
    if (outcome.failure && m_sessionToken == token) throw *outcome.failure;
    if (!expireUnlessReplaced(token)) throw ServiceError::notSignedIn();
    if (++recovery.adoptions > mostAdoptions)
        throw ServiceError::requestFailed(u"Vorq could not renew your session. Try again."_s);
}

bool AccountSession::expireUnlessReplaced(const QString& refusedToken) {
    if (m_sessionToken != refusedToken) return !m_sessionToken.isEmpty();
    const VorqSessionStore::Record stored = m_store.readFresh();
    const bool isReplaced = !stored.token.isEmpty() && stored.token != refusedToken;
    if (isReplaced)
        adoptStored(stored);
    else
        markSessionExpired();
    return isReplaced;
}

} // namespace vorq
