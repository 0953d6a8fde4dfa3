// Refreshing the tokens of a session.

#include "backend/AccountSession.h"
#include "backend/Session.h"
#include "backend/VorqAPIService.h"
#include "support/Wakeup.h"

#include <vector>

namespace vorq {

// One refresh on its way and everyone who waits for it.
struct AccountSession::Refresh {
    quint64 sessionNumber = 0;
    bool ended = false;
    bool succeeded = false;
    std::vector<Wakeup> waiting;

    void end(bool success) {
        ended = true;
        succeeded = success;
        for (const Wakeup& wakeup : waiting)
            wakeup.fire();
    }

    static QCoro::Task<> wait(std::shared_ptr<Refresh> self, std::stop_token stop) {
        const Wakeup wakeup;
        self->waiting.push_back(wakeup);
        const std::stop_callback onStop(stop, [wakeup] { wakeup.fire(); });
        co_await wakeup;
    }
};

QCoro::Task<bool> AccountSession::refreshAccessTokenIfNeeded(std::stop_token stop) {
    std::shared_ptr<Refresh> refresh = m_refresh.lock();
    if (!refresh || refresh->ended || refresh->sessionNumber != m_sessionNumber) {
        const QString refreshToken = m_store.readFresh().refreshToken;
        if (refreshToken.isEmpty()) co_return false;
        refresh = std::make_shared<Refresh>();
        refresh->sessionNumber = m_sessionNumber;
        m_refresh = refresh;
        runRefresh(this, refresh, refreshToken, m_refreshStop.get_token());
    }
    if (!refresh->ended) co_await Refresh::wait(refresh, stop);
    co_return refresh->succeeded;
}

QCoro::Task<> AccountSession::refreshSettled(std::stop_token stop) {
    if (const std::shared_ptr<Refresh> refresh = m_refresh.lock(); refresh && !refresh->ended)
        co_await Refresh::wait(refresh, stop);
}

QCoro::Task<> AccountSession::runRefresh(QPointer<AccountSession> self,
                                         std::shared_ptr<Refresh> refresh, QString refreshToken,
                                         std::stop_token stop) {
    const quint64 number = self->m_sessionNumber;
    std::optional<Session> session;
    try {
        session = co_await self->m_api.refreshSession(refreshToken, stop);
    } catch (const std::exception&) {
        // Shows as a session that is not there.
    }
    refresh->end(self && !stop.stop_requested() &&
                 self->takeRefreshed(session, number, refreshToken));
}

bool AccountSession::takeRefreshed(const std::optional<Session>& session, quint64 sessionNumber,
                                   const QString& refreshToken) {
    if (m_sessionNumber != sessionNumber) return false;
    if (session && session->isLive()) {
        applySession(*session);
        return true;
    }
    // Another program of the user may have used up the refresh token and stored what it got.
    const VorqSessionStore::Record stored = m_store.readFresh();
    const bool replaced = !stored.token.isEmpty() && stored.token != m_sessionToken &&
                          stored.refreshToken != refreshToken;
    if (replaced) adoptStored(stored);
    return replaced;
}

} // namespace vorq
