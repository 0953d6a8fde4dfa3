#pragma once

#include "support/async/TaskSlot.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

#include <stop_token>

namespace vorq {

class AccountSession;
class AccountSignIn;
class LocalSignIn;

/// Tells the panel that nobody is signed in, and signs the user in: in the browser, or to this
/// computer's account. Main thread only.
class PanelSignIn final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isMissing READ isMissing NOTIFY changed)
    Q_PROPERTY(bool isOffered READ isOffered CONSTANT)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY changed)
    Q_PROPERTY(bool isWaitingForBrowser READ isWaitingForBrowser NOTIFY changed)
    Q_PROPERTY(QString failure READ failure NOTIFY changed)

  public:
    /// All must outlive this object. Without a local sign-in there is none to offer.
    PanelSignIn(AccountSession& account, AccountSignIn& signIn, LocalSignIn* local);

    /// Nobody is signed in.
    [[nodiscard]] bool isMissing() const;
    [[nodiscard]] bool isOffered() const { return m_local != nullptr; }
    [[nodiscard]] bool isRunning() const { return m_isRunning; }
    [[nodiscard]] bool isWaitingForBrowser() const;
    /// Why the last attempt came to nothing or the session ended, as a sentence; "" for no reason.
    [[nodiscard]] QString failure() const;

    /// To this computer's account. Does nothing while it is under way, or is not offered.
    Q_INVOKABLE void signIn();

    /// Does nothing while it is under way.
    Q_INVOKABLE void signInInBrowser();
    Q_INVOKABLE void cancelBrowser();

  signals:
    void changed();

  private:
    static QCoro::Task<> run(PanelSignIn* self, std::stop_token stop);
    QCoro::Task<QString> attempt(std::stop_token stop);
    void show(bool isRunning, const QString& failure);

    AccountSession& m_account;
    AccountSignIn& m_signIn;
    LocalSignIn* m_local;
    bool m_isRunning = false;
    QString m_failure;
    TaskSlot m_task;
};

} // namespace vorq
