#pragma once

#include "support/async/TaskSlot.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>
#include <QString>

#include <stop_token>

namespace vorq {

class AccountSession;
class BrowserSignIn;
class Clock;
class VorqAPIService;

/// The ways in which a session begins, and what the sign-in page shows of one in progress. What is
/// under way ends by itself when the object is destroyed. Main thread only.
class AccountSignIn final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isSigningIn READ isSigningIn NOTIFY progressChanged)
    Q_PROPERTY(bool isSigningInWithGoogle READ isSigningInWithGoogle WRITE setSigningInWithGoogle
                   NOTIFY progressChanged)
    Q_PROPERTY(bool isSigningInWithApple READ isSigningInWithApple WRITE setSigningInWithApple
                   NOTIFY progressChanged)
    Q_PROPERTY(bool isResettingPassword READ isResettingPassword WRITE setResettingPassword NOTIFY
                   progressChanged)
    Q_PROPERTY(QString passwordResetMessage READ passwordResetMessage WRITE setPasswordResetMessage
                   NOTIFY progressChanged)
    /// Why a sign-in failed or the session ended, as a sentence; "" for no reason.
    Q_PROPERTY(QString authError READ authError NOTIFY authErrorChanged)

  public:
    /// The references must outlive the object.
    AccountSignIn(AccountSession& account, VorqAPIService& api, Clock& clock);
    ~AccountSignIn() override;

    /// Without one, signInInBrowser reports that it is not available.
    void setBrowserSignIn(BrowserSignIn* browserSignIn) { m_browserSignIn = browserSignIn; }

    [[nodiscard]] bool isSigningIn() const { return m_progress.isSigningIn; }
    [[nodiscard]] bool isSigningInWithGoogle() const { return m_progress.withGoogle; }
    [[nodiscard]] bool isSigningInWithApple() const { return m_progress.withApple; }
    [[nodiscard]] bool isResettingPassword() const { return m_progress.isResettingPassword; }
    [[nodiscard]] QString passwordResetMessage() const { return m_progress.passwordReset; }
    [[nodiscard]] const QString& authError() const { return m_authError; }
    void setSigningInWithGoogle(bool signingIn);
    void setSigningInWithApple(bool signingIn);
    void setResettingPassword(bool resetting);
    void setPasswordResetMessage(const QString& message);

    /// Signs in with a one-time code. Gives whether there is a live session; throws ServiceError.
    QCoro::Task<bool> exchangeHandoff(QString code, std::stop_token stop = {});
    /// The same in the background, then brings the program forward.
    Q_INVOKABLE void activateFromMacHandoff(const QString& code);
    /// Does nothing while it is under way.
    Q_INVOKABLE void signInInBrowser(const QString& mode);
    /// The user no longer waits for the browser. Silent.
    Q_INVOKABLE void cancelBrowserSignIn();

  Q_SIGNALS:
    void progressChanged();
    void authErrorChanged();

    /// What came of activateFromMacHandoff() with this code: a sentence if it failed, else "".
    void macHandoffEnded(QString code, QString failure);

    /// After a sign-in in the browser, in this order, the last 200 ms later.
    void desktopRevealRequested();
    void activationRequested();
    void statusMenuRequested();

  private:
    struct Progress {
        bool isSigningIn = false;
        bool withGoogle = false;
        bool withApple = false;
        bool isResettingPassword = false;
        QString passwordReset{};

        bool operator==(const Progress&) const = default;
    };

    template<typename Value>
    void setProgress(Value Progress::* field, const Value& value);
    void setAuthError(const QString& error);
    void forgetProgress();

    static QCoro::Task<> runHandoff(QPointer<AccountSignIn> self, QString code,
                                    std::stop_token stop);
    static QCoro::Task<> runBrowserSignIn(QPointer<AccountSignIn> self, QString mode,
                                          std::stop_token stop);
    static QCoro::Task<> bringForward(QPointer<AccountSignIn> self, std::stop_token stop);

    AccountSession& m_account;
    VorqAPIService& m_api;
    Clock& m_clock;
    BrowserSignIn* m_browserSignIn = nullptr;
    Progress m_progress;
    QString m_authError;
    TaskSlot m_handoffTask;
    TaskSlot m_signInTask;
};

} // namespace vorq
