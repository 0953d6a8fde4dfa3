#include "backend/account/SessionRefresh.h"

#include "backend/api/VorqAPIService.h"
#include "support/async/Wakeup.h"

#include <utility>
#include <vector>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

// The backend refuses nothing for ten seconds after a refresh whose answer may have been lost, but
// asks to be tried again.
constexpr int tryAgain = 409;
constexpr Clock::Duration pauseBeforeNextTry = 2s;
constexpr Clock::Duration longestTrying = 14s;

// Longer than one call of another program may last.
constexpr Clock::Duration longestWaitForLock = 45s;
constexpr Clock::Duration pauseForLock = 20ms;

QCoro::Task<> wakeupOrStop(Wakeup wakeup, std::stop_token stop) {
    const std::stop_callback onStop(stop, [wakeup] { wakeup.fire(); });
    co_await wakeup;
}

void fireAll(std::vector<Wakeup>& wakeups) {
    for (const Wakeup& wakeup : std::exchange(wakeups, {}))
        wakeup.fire();
}

} // namespace

// One refresh on its way and everyone who waits for it.
struct SessionRefresh::Round {
    std::optional<Outcome> outcome;
    bool isAsking = false;
    std::vector<Wakeup> waiting;
    std::vector<Wakeup> settling;

    void setAsking(bool asking) {
        isAsking = asking;
        if (!asking) fireAll(settling);
    }
    void end(Outcome ended) {
        if (outcome) return;
        outcome = std::move(ended);
        setAsking(false);
        fireAll(waiting);
    }
};

SessionRefresh::SessionRefresh(VorqAPIService& api, VorqSessionStore& store, Clock& clock,
                               OnTokens onTokens)
    : m_api(api), m_store(store), m_clock(clock), m_onTokens(std::move(onTokens)) {}

SessionRefresh::~SessionRefresh() {
    m_stop.request_stop();
    leave();
}

void SessionRefresh::leave() {
    if (m_round) m_round->end({});
    m_round.reset();
}

QCoro::Task<SessionRefresh::Outcome> SessionRefresh::run(QString heldToken, std::stop_token stop) {
    std::shared_ptr<Round> round = m_round;
    if (!round || round->outcome) {
        round = std::make_shared<Round>();
        m_round = round;
        drive(this, round, heldToken, m_stop.get_token());
    }
    if (!round->outcome) {
        const Wakeup wakeup;
        round->waiting.push_back(wakeup);
        co_await wakeupOrStop(wakeup, stop);
    }
    co_return round->outcome.value_or(Outcome());
}

QCoro::Task<> SessionRefresh::settled(std::stop_token stop) {
    const std::shared_ptr<Round> round = m_round;
    if (!round || !round->isAsking) co_return;
    const Wakeup wakeup;
    round->settling.push_back(wakeup);
    co_await wakeupOrStop(wakeup, stop);
}

QCoro::Task<> SessionRefresh::drive(SessionRefresh* self, std::shared_ptr<Round> round,
                                    QString heldToken, std::stop_token stop) {
    Outcome outcome = co_await attempt(self, round, heldToken, stop);
    round->end(std::move(outcome));
}

QCoro::Task<SessionRefresh::Outcome> SessionRefresh::attempt(SessionRefresh* self,
                                                             std::shared_ptr<Round> round,
                                                             QString heldToken,
                                                             std::stop_token stop) {
    std::optional<Clock::Duration> end;
    for (;;) {
        std::optional<FolderLock> held = co_await lock(self, stop);
        if (stop.stop_requested() || round->outcome) co_return Outcome();
        if (!held) {
            co_return Outcome{.kind = Outcome::Kind::Failed,
                              .failure = ServiceError::requestFailed(
                                  u"Another Vorq program is renewing the session. Try again."_s)};
        }
        const VorqSessionStore::Record stored = self->m_store.readFresh();
        if (stored.refreshToken.isEmpty()) co_return Outcome{Outcome::Kind::Refused, {}};
        if (!heldToken.isEmpty() && stored.token != heldToken)
            co_return self->adoptReplacement(heldToken);
        // A token is good for one call: spent and not replaced, it would end the session with the
        // program.
        if (const std::optional<QString> reason = self->m_store.whyFixed()) {
            co_return Outcome{
                .kind = Outcome::Kind::Failed,
                .failure = ServiceError::requestFailed(
                    u"Vorq cannot write its settings (%1), so it could not renew your session. "
                    "You stay signed in."_s.arg(*reason))};
        }
        const Answer answer = co_await ask(self, round, stored.refreshToken, stop);
        if (stop.stop_requested() || round->outcome) co_return Outcome();
        if (answer.session && answer.session->isLive())
            co_return self->keep(*answer.session, stored);
        if (!answer.error || answer.error->kind() == ServiceError::Kind::NotSignedIn)
            co_return self->adoptReplacement(stored.token);
        const Clock::Duration now = self->m_clock.now();
        if (!end) end = now + longestTrying;
        if (answer.error->status() != tryAgain || now + pauseBeforeNextTry > *end)
            co_return Outcome{Outcome::Kind::Failed, answer.error};
        held.reset();
        round->setAsking(false);
        co_await sleepFor(self->m_clock, pauseBeforeNextTry, stop);
        if (stop.stop_requested() || round->outcome) co_return Outcome();
    }
}

// Nothing if it could not be had in time.
QCoro::Task<std::optional<FolderLock>> SessionRefresh::lock(SessionRefresh* self,
                                                            std::stop_token stop) {
    const QString folder = self->m_store.lockFolder();
    const Clock::Duration end = self->m_clock.now() + longestWaitForLock;
    for (;;) {
        std::optional<FolderLock> held = FolderLock::take(folder, 0ms);
        if (held || self->m_clock.now() >= end) co_return std::move(held);
        co_await sleepFor(self->m_clock, pauseForLock, stop);
        if (stop.stop_requested()) co_return std::nullopt;
    }
}

QCoro::Task<SessionRefresh::Answer> SessionRefresh::ask(SessionRefresh* self,
                                                        std::shared_ptr<Round> round,
                                                        QString refreshToken,
                                                        std::stop_token stop) {
    round->setAsking(true);
    Answer answer;
    try {
        answer.session = co_await self->m_api.refreshSession(refreshToken, stop);
    } catch (const ServiceError& error) {
        answer.error = error;
    } catch (const BackendError& error) {
        answer.error = ServiceError::requestFailed(error.message());
    }
    co_return answer;
}

// A sign-in or sign-out that came meanwhile stands.
SessionRefresh::Outcome SessionRefresh::keep(const Session& session,
                                             const VorqSessionStore::Record& stored) {
    const VorqSessionStore::Record record = m_store.recordOf(session);
    if (!m_store.replace(stored.refreshToken, record)) return adoptReplacement(stored.token);
    m_onTokens(record, session);
    return {Outcome::Kind::Renewed, {}};
}

// Refused unless another token is stored now.
SessionRefresh::Outcome SessionRefresh::adoptReplacement(const QString& formerToken) {
    const VorqSessionStore::Record stored = m_store.readFresh();
    if (stored.token.isEmpty() || stored.token == formerToken) return {Outcome::Kind::Refused, {}};
    m_onTokens(stored, std::nullopt);
    return {Outcome::Kind::Adopted, {}};
}

} // namespace vorq
