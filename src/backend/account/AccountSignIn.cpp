// The ways in which a session begins.

#include "backend/account/AccountSession.h"
#include "backend/account/BrowserSignIn.h"
#include "backend/api/VorqAPIService.h"
#include "platform/Clock.h"
#include "support/text/Text.h"

#include <QLoggingCategory>

namespace vorq {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

QCoro::Task<bool> AccountSession::exchangeHandoff(QString code, std::stop_token stop) {
    const QPointer<AccountSession> self(this);
    const Session session = co_await m_api.exchangeMacHandoff(code, stop);
    if (!self || stop.stop_requested()) throw OperationCancelled();
    if (session.isLive()) beginSession(session);
    co_return session.isLive();
}

void AccountSession::activateFromMacHandoff(const QString& code) {
    const QStringView resolved = trimmed(code);
    if (resolved.isEmpty()) return;
    // A code that came twice must not stop the exchange that will succeed.
    m_handoffTask.release();
    m_handoffTask.restart(
        [self = QPointer(this), sent = resolved.toString()](std::stop_token stop) {
            return runHandoff(self, sent, std::move(stop));
        });
}

QCoro::Task<> AccountSession::runHandoff(QPointer<AccountSession> self, QString code,
                                         std::stop_token stop) {
    QString failure;
    try {
        const bool isLive = co_await self->exchangeHandoff(code, stop);
        if (!isLive) failure = u"Sign in failed. Try again."_s;
    } catch (const OperationCancelled&) {
        co_return;
    } catch (const BackendError& error) {
        if (!self || stop.stop_requested()) co_return;
        qWarning("Vorq mac handoff failed: %s", error.what());
        co_return emit self->macHandoffEnded(code, error.message());
    }
    emit self->macHandoffEnded(code, failure);
    if (!self) co_return;
    co_await bringForward(self, stop);
}

void AccountSession::signInInBrowser(const QString& mode) {
    if (m_isSigningIn) return;
    if ((m_isSigningInWithGoogle || m_isSigningInWithApple) && m_browserSignIn)
        m_browserSignIn->cancelPending();
    change(m_isSigningIn, true, &AccountSession::isSigningInChanged);
    setAuthError({});
    m_signInTask.restart([self = QPointer(this), mode](std::stop_token stop) {
        return runBrowserSignIn(self, mode, std::move(stop));
    });
}

QCoro::Task<> AccountSession::runBrowserSignIn(QPointer<AccountSession> self, QString mode,
                                               std::stop_token stop) {
    if (stop.stop_requested()) co_return;
    // Nothing once the session has begun: what is said from then on is of something else.
    std::optional<QString> problem = QString();
    try {
        if (!self->m_browserSignIn)
            throw SignInError::failed(u"Browser sign-in is not available here."_s);
        const Session session = co_await self->m_browserSignIn->signInInBrowser(mode, stop);
        if (!self || stop.stop_requested()) co_return;
        if (session.isLive()) {
            self->beginSession(session);
            self->setAuthError({});
            problem.reset();
            co_await bringForward(self, stop);
        } else {
            problem = session.message.value_or(u"Sign in failed. Try again."_s);
        }
    } catch (const SignInError& error) {
        if (error.kind() != SignInError::Kind::Cancelled) problem = error.message();
    } catch (const BackendError& error) {
        problem = error.message();
    }
    if (!self || stop.stop_requested()) co_return;
    if (problem) self->setAuthError(*problem);
    self->change(self->m_isSigningIn, false, &AccountSession::isSigningInChanged);
}

QCoro::Task<> AccountSession::bringForward(QPointer<AccountSession> self, std::stop_token stop) {
    if (self) emit self->desktopRevealRequested();
    if (self) emit self->activationRequested();
    if (!self) co_return;
    co_await sleepFor(self->m_clock, 200ms, stop);
    if (self && !stop.stop_requested()) emit self->statusMenuRequested();
}

} // namespace vorq
