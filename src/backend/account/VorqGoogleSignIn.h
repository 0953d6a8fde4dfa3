#pragma once

#include "backend/account/BrowserSignIn.h"
#include "backend/account/LoopbackServer.h"
#include "backend/account/PendingSignIn.h"
#include "platform/Clock.h"
#include "support/async/TaskSlot.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

namespace vorq {

class UrlOpener;
class VorqAPIService;

/// Sign-in on the website: opens its page in the user's browser and waits until that comes back,
/// to the loopback address or by a link of Vorq's own scheme. One attempt at a time; nothing of it
/// outlives its end. Main thread only.
class VorqGoogleSignIn final : public QObject, public BrowserSignIn, public PendingSignIn {
    Q_OBJECT

  public:
    using MakeServer = std::function<std::unique_ptr<LoopbackServer>()>;

    /// All but the functions must outlive this object.
    struct Ports {
        VorqAPIService& api;
        Clock& clock;
        UrlOpener& opener;
        MakeServer makeServer;
        QString ownIdentifier; ///< of this application, which is no browser
    };

    explicit VorqGoogleSignIn(Ports ports);
    /// Ends the attempt that is pending.
    ~VorqGoogleSignIn() override;

    QCoro::Task<Session> signInInBrowser(QString mode, std::stop_token stop) override;

    /// Gives the address that the browser came back with; throws SignInError. The label names the
    /// sign-in in what is said of failures.
    QCoro::Task<QUrl> openBrowserAndAwaitLoopback(QUrl authorizeURL, QString label,
                                                  std::stop_token stop);

    void cancelPending() override;
    [[nodiscard]] bool isPending() const override { return m_pending != nullptr; }
    void finish(const QUrl& url) override { finishPending(url); }
    [[nodiscard]] std::optional<RunningApplication> takeBrowserApplication() override;

  private:
    using Result = LoopbackServer::Result;
    struct Attempt;

    void begin(const std::shared_ptr<Attempt>& attempt, const QUrl& url, const QString& label);
    [[nodiscard]] bool startServer();
    void finishPending(const Result& result);
    static QCoro::Task<> openBrowser(QPointer<VorqGoogleSignIn> self, QUrl url, QString label,
                                     std::stop_token stop);

    Ports m_ports;
    std::shared_ptr<Attempt> m_pending;
    std::optional<Clock::TimerId> m_timeout;
    std::unique_ptr<LoopbackServer> m_server;
    std::optional<RunningApplication> m_browser;
    TaskSlot m_opening;
};

} // namespace vorq
