#pragma once

#include "backend/account/SessionRefresh.h"
#include "backend/account/VorqSessionStore.h"
#include "backend/http/Errors.h"
#include "support/async/TaskSlot.h"

#include <QObject>
#include <QPointer>

#include <memory>
#include <optional>
#include <type_traits>

namespace vorq {

class AppPaths;
class BrowserSignIn;
class Clock;
class Defaults;
class PreferredModel;
class VorqAPIService;
struct Session;

/// The signed-in user: what views show of the account, and everything that begins, refreshes,
/// changes and ends a session.
///
/// Operations in flight end by themselves when the object is destroyed, and the outcome of one
/// that belongs to a session which has been replaced meanwhile is dropped. Main thread only.
class AccountSession final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool signedIn READ signedIn NOTIFY signedInChanged)
    Q_PROPERTY(QString email READ email NOTIFY emailChanged)
    Q_PROPERTY(QString firstName READ firstName NOTIFY firstNameChanged)
    Q_PROPERTY(QString lastName READ lastName NOTIFY lastNameChanged)
    Q_PROPERTY(QString username READ username NOTIFY usernameChanged)
    Q_PROPERTY(QString displayName READ displayName NOTIFY displayNameChanged)
    Q_PROPERTY(QByteArray profileImageData READ profileImageData NOTIFY profileImageDataChanged)
    Q_PROPERTY(QString profileError READ profileError NOTIFY profileErrorChanged)
    Q_PROPERTY(bool isSavingProfile READ isSavingProfile NOTIFY isSavingProfileChanged)
    Q_PROPERTY(QString privacyError READ privacyError NOTIFY privacyErrorChanged)
    Q_PROPERTY(bool isSavingPrivacy READ isSavingPrivacy NOTIFY isSavingPrivacyChanged)
    Q_PROPERTY(QString authError READ authError NOTIFY authErrorChanged)
    Q_PROPERTY(bool isSigningIn READ isSigningIn NOTIFY isSigningInChanged)
    Q_PROPERTY(bool isSigningInWithGoogle READ isSigningInWithGoogle WRITE setSigningInWithGoogle
                   NOTIFY isSigningInWithGoogleChanged)
    Q_PROPERTY(bool isSigningInWithApple READ isSigningInWithApple WRITE setSigningInWithApple
                   NOTIFY isSigningInWithAppleChanged)
    Q_PROPERTY(bool isResettingPassword READ isResettingPassword WRITE setResettingPassword NOTIFY
                   isResettingPasswordChanged)
    Q_PROPERTY(QString passwordResetMessage READ passwordResetMessage WRITE setPasswordResetMessage
                   NOTIFY passwordResetMessageChanged)

  public:
    AccountSession(VorqAPIService& api, Defaults& defaults, const AppPaths& paths, Clock& clock,
                   PreferredModel& model, QObject* parent = nullptr);
    ~AccountSession() override;

    /// Without one, signInInBrowser reports that it is not available.
    void setBrowserSignIn(BrowserSignIn* browserSignIn) { m_browserSignIn = browserSignIn; }

    [[nodiscard]] bool signedIn() const { return m_signedIn; }
    [[nodiscard]] const QString& email() const { return m_email; }
    [[nodiscard]] const QString& firstName() const { return m_firstName; }
    [[nodiscard]] const QString& lastName() const { return m_lastName; }
    [[nodiscard]] const QString& username() const { return m_username; }
    /// Full name, else "@" and the username, else the email, else "Account".
    [[nodiscard]] QString displayName() const;
    /// A JPEG; null if there is none.
    [[nodiscard]] const QByteArray& profileImageData() const { return m_profileImageData; }
    [[nodiscard]] const QString& profileError() const { return m_profileError; }
    [[nodiscard]] bool isSavingProfile() const { return m_isSavingProfile; }
    [[nodiscard]] const QString& privacyError() const { return m_privacyError; }
    [[nodiscard]] bool isSavingPrivacy() const { return m_isSavingPrivacy; }
    [[nodiscard]] const QString& authError() const { return m_authError; }
    [[nodiscard]] bool isSigningIn() const { return m_isSigningIn; }
    [[nodiscard]] bool isSigningInWithGoogle() const { return m_isSigningInWithGoogle; }
    [[nodiscard]] bool isSigningInWithApple() const { return m_isSigningInWithApple; }
    [[nodiscard]] bool isResettingPassword() const { return m_isResettingPassword; }
    [[nodiscard]] const QString& passwordResetMessage() const { return m_passwordResetMessage; }
    void setSigningInWithGoogle(bool signingIn);
    void setSigningInWithApple(bool signingIn);
    void setResettingPassword(bool resetting);
    void setPasswordResetMessage(const QString& message);

    /// The bearer token, empty when signed out.
    [[nodiscard]] const QString& sessionToken() const { return m_sessionToken; }
    /// The pinned model, nothing when signed out or when the backend is to choose.
    [[nodiscard]] std::optional<QString> preferredModelForAIRequest() const;

    /// Takes up the stored session. It is refreshed in the background, from a later turn of the
    /// event loop on: a first request is costly, and a program that starts has more urgent work.
    void restoreSession();
    void applySession(const Session& session);
    /// Gives whether there are new tokens now. A call while another is under way shares its
    /// outcome. Stopping ends the wait only: the new tokens of a refresh are never lost.
    QCoro::Task<bool> refreshAccessTokenIfNeeded(std::stop_token stop = {});
    /// Waits until no answer to a refresh is under way, for a program that is about to end.
    QCoro::Task<> refreshSettled(std::stop_token stop = {});

    /// Signs in with a one-time code. Gives whether there is a live session; throws ServiceError.
    QCoro::Task<bool> exchangeHandoff(QString code, std::stop_token stop = {});
    /// The same in the background, then brings the program forward.
    Q_INVOKABLE void activateFromMacHandoff(const QString& code);
    Q_INVOKABLE void signInInBrowser(const QString& mode);
    Q_INVOKABLE void signOut();
    /// Ends the session on this machine and says why.
    void markSessionExpired(const std::optional<QString>& message = std::nullopt);

    QCoro::Task<bool> updateProfile(QString firstName, QString lastName, QString username,
                                    std::optional<QByteArray> avatarData = {},
                                    std::stop_token stop = {});
    void applyProfile(const QString& firstName, const QString& lastName, const QString& username,
                      const QString& email);
    QCoro::Task<bool> updatePrivacy(QString email, QString currentPassword, QString newPassword,
                                    std::stop_token stop = {});

    /// Runs the operation, a callable from token to QCoro::Task<T>, with the session's token; if
    /// that is refused, refreshes it and runs the operation once more. A session whose refresh is
    /// refused is expired; one whose refresh fails for now stays, and that failure is thrown.
    /// Throws what the operation throws, and OperationCancelled.
    template<typename Operation>
    std::invoke_result_t<Operation&, QString> withFreshSessionToken(Operation operation,
                                                                    std::stop_token stop = {});

  Q_SIGNALS:
    void signedInChanged();
    void emailChanged();
    void firstNameChanged();
    void lastNameChanged();
    void usernameChanged();
    void displayNameChanged();
    void profileImageDataChanged();
    void profileErrorChanged();
    void isSavingProfileChanged();
    void privacyErrorChanged();
    void isSavingPrivacyChanged();
    void authErrorChanged();
    void isSigningInChanged();
    void isSigningInWithGoogleChanged();
    void isSigningInWithAppleChanged();
    void isResettingPasswordChanged();
    void passwordResetMessageChanged();

    /// What came of activateFromMacHandoff() with this code: a sentence if it failed, else "".
    void macHandoffEnded(QString code, QString failure);

    /// After a sign-in in the browser, in this order, the last 200 ms later.
    void desktopRevealRequested();
    void activationRequested();
    void statusMenuRequested();

  private:
    /// What was tried for a call that was refused.
    struct Recovery {
        bool isRenewed = false;
        int adoptions = 0;
    };
    using Changed = void (AccountSession::*)();

    template<typename Value>
    void change(Value& field, const Value& value, Changed changed) {
        if (field == value) return;
        field = value;
        emit(this->*changed)();
    }
    void setIdentity(const VorqSessionStore::Record& record);
    void setProfileImageData(const QByteArray& image);
    void setAuthError(const QString& error);
    [[nodiscard]] VorqSessionStore::Record record() const;
    void adoptStored(const VorqSessionStore::Record& stored);
    /// Stores and shows a profile that was changed from the former one. If another program has
    /// replaced the session meanwhile, that one stands, with the profile if the user is the same.
    void keepProfile(const VorqSessionStore::Record& former,
                     const VorqSessionStore::Record& changed);
    void beginSession(const Session& session);
    void forgetSession();
    /// From here on what was under way belongs to a former session and is dropped.
    void leaveSession();
    void adoptTokens(const VorqSessionStore::Record& stored, const std::optional<Session>& session);
    /// Ends with another token than the refused one in its place, or throws.
    QCoro::Task<> replaceRefused(QString token, Recovery& recovery, std::stop_token stop);
    /// After a refused token could not be replaced. Gives whether another stands in its place.
    bool expireUnlessReplaced(const QString& refusedToken);

    static QCoro::Task<> runLaunchRefresh(QPointer<AccountSession> self, std::stop_token stop);
    static QCoro::Task<> runHandoff(QPointer<AccountSession> self, QString code,
                                    std::stop_token stop);
    static QCoro::Task<> runBrowserSignIn(QPointer<AccountSession> self, QString mode,
                                          std::stop_token stop);
    static QCoro::Task<> bringForward(QPointer<AccountSession> self, std::stop_token stop);
    [[nodiscard]] QString privacyProblem(const QString& email, const QString& currentPassword,
                                         const QString& newPassword) const;

    VorqAPIService& m_api;
    VorqSessionStore m_store;
    Clock& m_clock;
    PreferredModel& m_model;
    BrowserSignIn* m_browserSignIn = nullptr;

    bool m_signedIn = false;
    QString m_email;
    QString m_firstName;
    QString m_lastName;
    QString m_username;
    QByteArray m_profileImageData;
    QString m_profileError;
    bool m_isSavingProfile = false;
    QString m_privacyError;
    bool m_isSavingPrivacy = false;
    QString m_authError;
    bool m_isSigningIn = false;
    bool m_isSigningInWithGoogle = false;
    bool m_isSigningInWithApple = false;
    bool m_isResettingPassword = false;
    QString m_passwordResetMessage;
    QString m_sessionToken;

    // Counts sessions begun and ended, so that late outcomes are known as such.
    quint64 m_sessionNumber = 0;
    SessionRefresh m_refresh;
    TaskSlot m_launchRefreshTask;
    TaskSlot m_handoffTask;
    TaskSlot m_signInTask;
    TaskSlot m_signOutTask;
};

template<typename Operation>
std::invoke_result_t<Operation&, QString>
AccountSession::withFreshSessionToken(Operation operation, std::stop_token stop) {
    const QPointer<AccountSession> self(this);
    for (Recovery recovery;;) {
        const QString token = m_sessionToken;
        try {
            co_return co_await operation(token);
        } catch (const ServiceError& error) {
            if (error.kind() != ServiceError::Kind::NotSignedIn) throw;
        }
        if (!self || stop.stop_requested()) throw OperationCancelled();
        co_await replaceRefused(token, recovery, stop);
        if (!self || stop.stop_requested()) throw OperationCancelled();
    }
}

} // namespace vorq
