#include "shell/panel/PanelSignIn.h"

#include "backend/account/AccountSession.h"
#include "backend/account/AccountSignIn.h"
#include "backend/account/SignInUrl.h"
#include "backend/http/Errors.h"
#include "platform/LocalSignIn.h"

#include <utility>

namespace vorq {

PanelSignIn::PanelSignIn(AccountSession& account, AccountSignIn& signIn, LocalSignIn* local)
    : m_account(account), m_signIn(signIn), m_local(local) {
    connect(&account, &AccountSession::signedInChanged, this, [this] { show(m_isRunning, {}); });
    connect(&signIn, &AccountSignIn::progressChanged, this, &PanelSignIn::changed);
    connect(&signIn, &AccountSignIn::authErrorChanged, this, &PanelSignIn::changed);
}

bool PanelSignIn::isMissing() const {
    return !m_account.signedIn();
}

bool PanelSignIn::isWaitingForBrowser() const {
    return m_signIn.isSigningIn();
}

QString PanelSignIn::failure() const {
    if (m_isRunning) return {};
    return m_failure.isEmpty() ? m_signIn.authError() : m_failure;
}

void PanelSignIn::signInInBrowser() {
    show(m_isRunning, {});
    m_signIn.signInInBrowser(QStringLiteral("sign-in"));
}

void PanelSignIn::cancelBrowser() {
    m_signIn.cancelBrowserSignIn();
}

void PanelSignIn::signIn() {
    if (m_isRunning || !m_local) return;
    show(true, {});
    m_task.restart([this](std::stop_token stop) { return run(this, std::move(stop)); });
}

QCoro::Task<> PanelSignIn::run(PanelSignIn* self, std::stop_token stop) {
    const QString failure = co_await self->attempt(stop);
    if (!stop.stop_requested()) self->show(false, failure);
}

// Gives the sentence of a failure; "" for none.
QCoro::Task<QString> PanelSignIn::attempt(std::stop_token stop) {
    const std::expected<QUrl, QString> url = co_await m_local->handoff(stop);
    if (stop.stop_requested()) co_return QString();
    if (!url) co_return url.error();
    const std::optional<QString> code = SignInUrl::handoffCode(*url);
    if (!code) co_return tr("vorq-gateway gave no account.");
    try {
        const bool isLive = co_await m_signIn.exchangeHandoff(*code, stop);
        co_return isLive ? QString() : tr("Sign in failed. Try again.");
    } catch (const BackendError& error) {
        co_return error.message();
    }
}

void PanelSignIn::show(bool isRunning, const QString& failure) {
    m_isRunning = isRunning;
    m_failure = failure;
    emit changed();
}

} // namespace vorq
