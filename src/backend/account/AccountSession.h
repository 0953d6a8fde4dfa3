#pragma once

#include "backend/account/AccountProfile.h"
#include "backend/account/SessionTokens.h"
#include "backend/account/VorqSessionStore.h"
#include "support/async/TaskSlot.h"

#include <QObject>

#include <optional>

namespace vorq {

class AppPaths;
class Clock;
class Defaults;
class PreferredModel;
class VorqAPIService;
struct Session;

/// The session of the signed-in user: restored, begun, replaced and ended, each time with its
/// profile, and stored whole. Main thread only.
class AccountSession final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool signedIn READ signedIn NOTIFY signedInChanged)
    Q_PROPERTY(vorq::AccountProfile profile READ profile NOTIFY profileChanged)

  public:
    AccountSession(VorqAPIService& api, Defaults& defaults, const AppPaths& paths, Clock& clock,
                   PreferredModel& model, QObject* parent = nullptr);
    ~AccountSession() override;

    [[nodiscard]] bool signedIn() const { return m_signedIn; }
    [[nodiscard]] const AccountProfile& profile() const { return m_profile; }
    [[nodiscard]] SessionTokens& tokens() { return m_tokens; }
    [[nodiscard]] const QString& sessionToken() const { return m_tokens.sessionToken(); }
    /// The pinned model, nothing when signed out or when the backend is to choose.
    [[nodiscard]] std::optional<QString> preferredModelForAIRequest() const;

    /// Takes up the stored session. It is refreshed in the background, from a later turn of the
    /// event loop on: a first request is costly, and a program that starts has more urgent work.
    void restoreSession();
    void applySession(const Session& session);
    /// The same for another session than the one before: what was under way is dropped.
    void beginSession(const Session& session);
    Q_INVOKABLE void signOut();
    /// Ends the session on this machine and says why.
    void markSessionExpired(const std::optional<QString>& message = std::nullopt);

    /// The session as it is stored, without its refresh token.
    [[nodiscard]] VorqSessionStore::Record record() const;
    /// Stores and shows a profile that was changed from the former one. If another program has
    /// replaced the session meanwhile, that one stands, with the profile if the user is the same.
    void keepProfile(const VorqSessionStore::Record& former,
                     const VorqSessionStore::Record& changed);
    /// The same with all names. An empty email leaves the one before.
    void applyProfile(const QString& firstName, const QString& lastName, const QString& username,
                      const QString& email);
    /// An email that is known on this machine alone, while nobody is signed in.
    void keepEmail(const QString& email);
    /// Stores and shows an avatar. Gives what went wrong, in the platform's words, or nothing.
    [[nodiscard]] QString keepProfileImage(const QByteArray& image);

  Q_SIGNALS:
    void signedInChanged();
    void profileChanged();

    /// The session ends or gives way to another: what was under way for it is dropped.
    void sessionLeft();
    /// The user has signed out: what was said of the account is of no interest any more.
    void signedOut();
    /// It ended by itself, with a sentence why.
    void sessionExpired(const QString& sentence);

  private:
    void show(const VorqSessionStore::Record& record, const QByteArray& image);
    void setProfile(const AccountProfile& profile);
    void setSignedIn(bool signedIn);
    void adoptStored(const VorqSessionStore::Record& stored);
    void adoptTokens(const VorqSessionStore::Record& stored, const std::optional<Session>& session);
    void forgetSession();
    void leaveSession();

    VorqAPIService& m_api;
    VorqSessionStore m_store;
    PreferredModel& m_model;
    SessionTokens m_tokens;
    bool m_signedIn = false;
    AccountProfile m_profile;
    TaskSlot m_signOutTask;
};

/// The record with other names. An empty email leaves the one before.
[[nodiscard]] VorqSessionStore::Record withProfile(VorqSessionStore::Record record,
                                                   const QString& firstName,
                                                   const QString& lastName, const QString& username,
                                                   const QString& email);

} // namespace vorq
