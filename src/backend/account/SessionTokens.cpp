#include "backend/account/SessionTokens.h"

#include "backend/api/Session.h"

namespace vorq {

using namespace Qt::StringLiterals;

namespace {

// Other programs can hardly replace a session this often during one call.
constexpr int mostAdoptions = 4;

} // namespace

SessionTokens::SessionTokens(VorqAPIService& api, VorqSessionStore& store, Clock& clock)
    : m_store(store),
      m_refresh(api, store, clock,
                [this](const VorqSessionStore::Record& stored,
                       const std::optional<Session>& session) { adopt(stored, session); }) {}

SessionTokens::~SessionTokens() = default;

void SessionTokens::leaveSession() {
    m_soon.cancel();
    ++m_sessionNumber;
    m_refresh.leave();
}

void SessionTokens::refreshSoon() {
    m_soon.restart(
        [self = QPointer(this)](std::stop_token stop) { return runSoon(self, std::move(stop)); });
}

QCoro::Task<> SessionTokens::runSoon(QPointer<SessionTokens> self, std::stop_token stop) {
    if (!self || stop.stop_requested()) co_return;
    co_await self->refreshAccessTokenIfNeeded(stop);
}

QCoro::Task<bool> SessionTokens::refreshAccessTokenIfNeeded(std::stop_token stop) {
    const SessionRefresh::Outcome outcome = co_await m_refresh.run(m_token, stop);
    co_return outcome.hasTokens();
}

QCoro::Task<> SessionTokens::refreshSettled(std::stop_token stop) {
    // One that has not begun had better not.
    m_soon.cancel();
    return m_refresh.settled(std::move(stop));
}

// The token goes first, so that whoever hears of the change makes no call with the former.
void SessionTokens::adopt(const VorqSessionStore::Record& stored,
                          const std::optional<Session>& session) {
    m_token = stored.token;
    emit replaced(stored, session);
}

QCoro::Task<> SessionTokens::replaceRefused(QString token, Recovery& recovery,
                                            std::stop_token stop) {
    using Kind = SessionRefresh::Outcome::Kind;
    const QPointer<SessionTokens> self(this);
    SessionRefresh::Outcome outcome{.kind = Kind::Refused, .failure = {}};
    if (!recovery.isRenewed && m_token == token) {
        outcome = co_await m_refresh.run(token, stop);
        if (!self || stop.stop_requested()) throw OperationCancelled();
    }
    if (outcome.kind == Kind::Renewed && !m_token.isEmpty()) {
        recovery.isRenewed = true;
        co_return;
    }
    if (outcome.failure && m_token == token) throw *outcome.failure;
    if (!expireUnlessReplaced(token)) throw ServiceError::notSignedIn();
    if (++recovery.adoptions > mostAdoptions)
        throw ServiceError::requestFailed(u"Vorq could not renew your session. Try again."_s);
}

bool SessionTokens::expireUnlessReplaced(const QString& refusedToken) {
    if (m_token != refusedToken) return !m_token.isEmpty();
    const VorqSessionStore::Record stored = m_store.readFresh();
    const bool isReplaced = !stored.token.isEmpty() && stored.token != refusedToken;
    if (isReplaced)
        adopt(stored, std::nullopt);
    else
        emit expired();
    return isReplaced;
}

} // namespace vorq
