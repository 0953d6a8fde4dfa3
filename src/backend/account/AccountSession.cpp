#include "backend/account/AccountSession.h"

#include "backend/account/ModelCatalogue.h"
#include "backend/account/PreferredModel.h"
#include "backend/api/Session.h"
#include "backend/api/VorqAPIService.h"
#include "support/text/Text.h"

#include <QStringList>

namespace vorq {

using namespace Qt::StringLiterals;

AccountSession::AccountSession(VorqAPIService& api, Defaults& defaults, const AppPaths& paths,
                               Clock& clock, PreferredModel& model, QObject* parent)
    : QObject(parent),
      m_api(api),
      m_store(defaults, paths),
      m_clock(clock),
      m_model(model),
      m_refresh(api, m_store, clock,
                [this](const VorqSessionStore::Record& stored,
                       const std::optional<Session>& session) { adoptTokens(stored, session); }) {
    const QPointer<AccountSession> self(this);
    model.setTokenSource([self] { return self ? self->sessionToken() : QString(); });
    for (const Changed changed :
         {&AccountSession::firstNameChanged, &AccountSession::lastNameChanged,
          &AccountSession::usernameChanged, &AccountSession::emailChanged})
        connect(this, changed, this, &AccountSession::displayNameChanged);
}

AccountSession::~AccountSession() = default;

QString AccountSession::displayName() const {
    QStringList names;
    for (const QString* name : {&m_firstName, &m_lastName}) {
        if (const QStringView shown = trimmed(*name); !shown.isEmpty()) names << shown.toString();
    }
    if (!names.isEmpty()) return names.join(u' ');
    if (const QStringView handle = trimmed(m_username); !handle.isEmpty())
        return u"@"_s + handle.toString();
    return m_email.isEmpty() ? u"Account"_s : m_email;
}

void AccountSession::setSigningInWithGoogle(bool signingIn) {
    change(m_isSigningInWithGoogle, signingIn, &AccountSession::isSigningInWithGoogleChanged);
}

void AccountSession::setSigningInWithApple(bool signingIn) {
    change(m_isSigningInWithApple, signingIn, &AccountSession::isSigningInWithAppleChanged);
}

void AccountSession::setResettingPassword(bool resetting) {
    change(m_isResettingPassword, resetting, &AccountSession::isResettingPasswordChanged);
}

void AccountSession::setPasswordResetMessage(const QString& message) {
    change(m_passwordResetMessage, message, &AccountSession::passwordResetMessageChanged);
}

void AccountSession::setAuthError(const QString& error) {
    change(m_authError, error, &AccountSession::authErrorChanged);
}

void AccountSession::setProfileImageData(const QByteArray& image) {
    if (image == m_profileImageData && image.isNull() == m_profileImageData.isNull()) return;
    m_profileImageData = image;
    emit profileImageDataChanged();
}

std::optional<QString> AccountSession::preferredModelForAIRequest() const {
    return modelForRequest(m_signedIn, m_model.preferredAIModelID());
}

VorqSessionStore::Record AccountSession::record() const {
    return {.email = m_email,
            .token = m_sessionToken,
            .refreshToken = {},
            .firstName = m_firstName,
            .lastName = m_lastName,
            .username = m_username};
}

// The token goes first, so that whoever hears of a change finds a session that is whole.
void AccountSession::setIdentity(const VorqSessionStore::Record& record) {
    m_sessionToken = record.token;
    change(m_email, record.email, &AccountSession::emailChanged);
    change(m_firstName, record.firstName, &AccountSession::firstNameChanged);
    change(m_lastName, record.lastName, &AccountSession::lastNameChanged);
    change(m_username, record.username, &AccountSession::usernameChanged);
}

void AccountSession::adoptStored(const VorqSessionStore::Record& stored) {
    setIdentity(stored);
    setProfileImageData(m_store.readProfileImage());
    change(m_signedIn, true, &AccountSession::signedInChanged);
}

void AccountSession::leaveSession() {
    m_launchRefreshTask.cancel();
    ++m_sessionNumber;
    m_refresh.leave();
    change(m_isSavingProfile, false, &AccountSession::isSavingProfileChanged);
    change(m_isSavingPrivacy, false, &AccountSession::isSavingPrivacyChanged);
}

void AccountSession::restoreSession() {
    leaveSession();
    const VorqSessionStore::Record stored = m_store.read();
    if (stored.token.isEmpty()) {
        setIdentity({});
        setProfileImageData({});
        change(m_signedIn, false, &AccountSession::signedInChanged);
        return;
    }
    adoptStored(stored);
    if (stored.refreshToken.isEmpty()) return;
    m_launchRefreshTask.restart(
        [self = QPointer(this)](std::stop_token stop) { return runLaunchRefresh(self, stop); });
}

void AccountSession::applySession(const Session& session) {
    const VorqSessionStore::Record record = m_store.recordOf(session);
    m_store.write(record);
    adoptStored(record);
    m_model.applyPreferredModelFromSession(session);
}

void AccountSession::beginSession(const Session& session) {
    leaveSession();
    applySession(session);
}

void AccountSession::forgetSession() {
    leaveSession();
    setIdentity({});
    setProfileImageData({});
    change(m_signedIn, false, &AccountSession::signedInChanged);
}

void AccountSession::signOut() {
    const QString token = m_sessionToken;
    m_store.clear();
    forgetSession();
    setAuthError({});
    change(m_profileError, {}, &AccountSession::profileErrorChanged);
    change(m_privacyError, {}, &AccountSession::privacyErrorChanged);
    setPasswordResetMessage({});
    change(m_isSigningIn, false, &AccountSession::isSigningInChanged);
    setSigningInWithGoogle(false);
    setSigningInWithApple(false);
    setResettingPassword(false);
    if (token.isEmpty()) return;
    m_signOutTask.release();
    m_signOutTask.restart(
        [&api = m_api, token](std::stop_token stop) { return api.signOut(token, stop); });
}

// What another program of the user has stored meanwhile is not what was refused.
void AccountSession::markSessionExpired(const std::optional<QString>& message) {
    m_store.clearIfStill(m_sessionToken);
    forgetSession();
    const QStringView said = message ? trimmed(*message) : QStringView();
    setAuthError(said.isEmpty() ? ServiceError::notSignedIn().message() : said.toString());
}

} // namespace vorq
