#include "backend/account/VorqGoogleSignIn.h"

#include "backend/account/SignInUrl.h"
#include "backend/api/VorqAPIService.h"
#include "backend/http/BackendLog.h"
#include "platform/browser/UrlOpener.h"
#include "support/async/Wakeup.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {

using namespace std::chrono_literals;

namespace {

constexpr Clock::Duration attemptLimit = 300s;
constexpr Clock::Duration browserStart = 400ms;

// Empty ones count as missing.
std::optional<QString> filledValue(const QString& name, const QUrl& url) {
    std::optional<QString> value = SignInUrl::queryValue(name, url);
    return value && !value->isEmpty() ? value : std::nullopt;
}

void throwReportedError(const QUrl& callback) {
    std::optional<QString> message = filledValue(u"error_description"_s, callback);
    if (!message) message = filledValue(u"error"_s, callback);
    if (message) throw SignInError::failed(message->replace(u'+', u' '));
}

} // namespace

// The result is there once the attempt has been woken.
struct VorqGoogleSignIn::Attempt {
    Wakeup ended{};
    Result result = std::unexpected(SignInError::cancelled());
};

VorqGoogleSignIn::VorqGoogleSignIn(Ports ports) : m_ports(std::move(ports)) {}

VorqGoogleSignIn::~VorqGoogleSignIn() {
    cancelPending();
}

QCoro::Task<Session> VorqGoogleSignIn::signInInBrowser(QString mode, std::stop_token stop) {
    // After the wait this object may be gone, but not then if the attempt has succeeded.
    VorqAPIService& api = m_ports.api;
    const QUrl page = api.websiteSignInURL(mode);
    const QUrl callback = co_await openBrowserAndAwaitLoopback(page, u"Vorq"_s, stop);
    throwReportedError(callback);
    if (const auto code = filledValue(u"handoff"_s, callback))
        co_return co_await api.exchangeMacHandoff(*code, stop);
    if (const auto token = filledValue(u"refresh_token"_s, callback))
        co_return co_await api.refreshSession(*token, stop);
    throw SignInError::failed(u"Sign-in did not return a session. Try again."_s);
}

QCoro::Task<QUrl> VorqGoogleSignIn::openBrowserAndAwaitLoopback(QUrl authorizeURL, QString label,
                                                                std::stop_token stop) {
    const auto attempt = std::make_shared<Attempt>();
    begin(attempt, authorizeURL, label);
    const std::stop_callback onStop(stop, [self = QPointer(this), attempt] {
        if (self && self->m_pending == attempt) self->cancelPending();
    });
    co_await attempt->ended;
    if (!attempt->result) throw SignInError(attempt->result.error());
    co_return *attempt->result;
}

void VorqGoogleSignIn::begin(const std::shared_ptr<Attempt>& attempt, const QUrl& url,
                             const QString& label) {
    cancelPending();
    m_pending = attempt;
    m_timeout = m_ports.clock.after(attemptLimit, [this, label] {
        m_timeout.reset();
        finishPending(std::unexpected(SignInError::timedOut(label)));
    });
    // Without the listener the browser would bring its code to whoever holds the port.
    if (!startServer()) return;
    m_opening.restart([self = QPointer(this), url, label](std::stop_token stop) {
        return openBrowser(self, url, label, std::move(stop));
    });
}

bool VorqGoogleSignIn::startServer() {
    m_server = m_ports.makeServer();
    const auto started = m_server->start([this](const Result& result) { finishPending(result); });
    if (!started) finishPending(std::unexpected(started.error()));
    return started.has_value();
}

// Of a browser that was merely handed the address nothing is known.
QCoro::Task<> VorqGoogleSignIn::openBrowser(QPointer<VorqGoogleSignIn> self, QUrl url,
                                            QString label, std::stop_token stop) {
    if (!self || stop.stop_requested()) co_return;
    const UrlOpener::Opened opened = co_await self->m_ports.opener.openInFront(url, stop);
    if (!self || stop.stop_requested()) co_return;
    if (opened) {
        const std::optional<RunningApplication>& application = *opened;
        if (application && application->identifier != self->m_ports.ownIdentifier)
            self->m_browser = application;
        co_return;
    }
    qCInfo(backendLog, "Vorq sign-in: %s", qUtf8Printable(opened.error()));
    if (!self->m_ports.opener.open(url)) {
        const QString sentence = u"Could not open your browser for %1 sign-in."_s.arg(label);
        co_return self->finishPending(std::unexpected(SignInError::failed(sentence)));
    }
    co_await sleepFor(self->m_ports.clock, browserStart, stop);
}

void VorqGoogleSignIn::cancelPending() {
    finishPending(std::unexpected(SignInError::cancelled()));
}

void VorqGoogleSignIn::finishPending(const Result& result) {
    if (const auto timer = std::exchange(m_timeout, std::nullopt)) m_ports.clock.cancel(*timer);
    // The result may belong to the server.
    const Result kept = result;
    m_server.reset();
    m_opening.cancel();
    if (!kept) m_browser.reset();
    if (const std::shared_ptr<Attempt> attempt = std::exchange(m_pending, nullptr)) {
        attempt->result = kept;
        attempt->ended.fire();
    }
}

std::optional<RunningApplication> VorqGoogleSignIn::takeBrowserApplication() {
    return std::exchange(m_browser, std::nullopt);
}

} // namespace vorq
