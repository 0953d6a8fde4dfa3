#include "backend/account/AccountSignIn.h"

#include "backend/account/AccountSession.h"
#include "backend/account/BrowserSignIn.h"
#include "backend/api/Session.h"
#include "backend/api/VorqAPIService.h"
#include "backend/http/BackendLog.h"
#include "platform/Clock.h"
#include "support/text/Text.h"

namespace vorq {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

AccountSignIn::AccountSignIn(AccountSession& account, VorqAPIService& api, Clock& clock)
    : m_account(account), m_api(api), m_clock(clock) {
    connect(&account, &AccountSession::sessionExpired, this, &AccountSignIn::setAuthError);
    connect(&account, &AccountSession::signedOut, this, [this] {
        setAuthError({});
        forgetProgress();
    });
}

AccountSignIn::~AccountSignIn() = default;

template<typename Value>
void AccountSignIn::setProgress(Value Progress::* field, const Value& value) {
    if (m_progress.*field == value) return;
    m_progress.*field = value;
    emit progressChanged();
}

void AccountSignIn::setSigningInWithGoogle(bool signingIn) {
    setProgress(&Progress::withGoogle, signingIn);
}

void AccountSignIn::setSigningInWithApple(bool signingIn) {
    setProgress(&Progress::withApple, signingIn);
}

void AccountSignIn::setResettingPassword(bool resetting) {
    setProgress(&Progress::isResettingPassword, resetting);
}

void AccountSignIn::setPasswordResetMessage(const QString& message) {
    setProgress(&Progress::passwordReset, message);
}

void AccountSignIn::setAuthError(const QString& error) {
    if (m_authError == error) return;
    m_authError = error;
    emit authErrorChanged();
}

void AccountSignIn::forgetProgress() {
    if (m_progress == Progress()) return;
    m_progress = {};
    emit progressChanged();
}

QCoro::Task<bool> AccountSignIn::exchangeHandoff(QString code, std::stop_token stop) {
    const QPointer<AccountSignIn> self(this);
    const Session session = co_await m_api.exchangeMacHandoff(code, stop);
    if (!self || stop.stop_requested()) throw OperationCancelled();
    if (session.isLive()) m_account.beginSession(session);
    co_return session.isLive();
}

void AccountSignIn::activateFromMacHandoff(const QString& code) {
    const QStringView resolved = trimmed(code);
    if (resolved.isEmpty()) return;
    // A code that came twice must not stop the exchange that will succeed.
    m_handoffTask.release();
    m_handoffTask.restart(
        [self = QPointer(this), sent = resolved.toString()](std::stop_token stop) {
            return runHandoff(self, sent, std::move(stop));
        });
}

QCoro::Task<> AccountSignIn::runHandoff(QPointer<AccountSignIn> self, QString code,
                                        std::stop_token stop) {
    QString failure;
    try {
        const bool isLive = co_await self->exchangeHandoff(code, stop);
        if (!isLive) failure = u"Sign in failed. Try again."_s;
    } catch (const OperationCancelled&) {
        co_return;
    } catch (const BackendError& error) {
        if (!self || stop.stop_requested()) co_return;
        qCWarning(backendLog, "Vorq mac handoff failed: %s", error.what());
        co_return emit self->macHandoffEnded(code, error.message());
    }
    emit self->macHandoffEnded(code, failure);
    if (!self) co_return;
    co_await bringForward(self, stop);
}

void AccountSignIn::signInInBrowser(const QString& mode) {
    if (m_progress.isSigningIn) return;
    if ((m_progress.withGoogle || m_progress.withApple) && m_browserSignIn)
        m_browserSignIn->cancelPending();
    setProgress(&Progress::isSigningIn, true);
    setAuthError({});
    m_signInTask.restart([self = QPointer(this), mode](std::stop_token stop) {
        return runBrowserSignIn(self, mode, std::move(stop));
    });
}

void AccountSignIn::cancelBrowserSignIn() {
    if (!m_progress.isSigningIn) return;
    m_signInTask.cancel();
    setProgress(&Progress::isSigningIn, false);
}

QCoro::Task<> AccountSignIn::runBrowserSignIn(QPointer<AccountSignIn> self, QString mode,
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
            self->m_account.beginSession(session);
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
    self->setProgress(&Progress::isSigningIn, false);
}

QCoro::Task<> AccountSignIn::bringForward(QPointer<AccountSignIn> self, std::stop_token stop) {
    if (self) emit self->desktopRevealRequested();
    if (self) emit self->activationRequested();
    if (!self) co_return;
    co_await sleepFor(self->m_clock, 200ms, stop);
    if (self && !stop.stop_requested()) emit self->statusMenuRequested();
}

} // namespace vorq
