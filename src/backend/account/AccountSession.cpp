#include "backend/account/AccountSession.h"

#include "backend/account/ModelCatalogue.h"
#include "backend/account/PreferredModel.h"
#include "backend/api/Session.h"
#include "backend/api/VorqAPIService.h"
#include "support/text/Text.h"

#include <utility>

namespace vorq {

AccountSession::AccountSession(VorqAPIService& api, Defaults& defaults, const AppPaths& paths,
                               Clock& clock, PreferredModel& model, QObject* parent)
    : QObject(parent),
      m_api(api),
      m_store(defaults, paths),
      m_model(model),
      m_tokens(api, m_store, clock) {
    const QPointer<AccountSession> self(this);
    model.setTokenSource([self] { return self ? self->sessionToken() : QString(); });
    connect(&m_tokens, &SessionTokens::replaced, this, &AccountSession::adoptTokens);
    connect(&m_tokens, &SessionTokens::expired, this, [this] { markSessionExpired(); });
}

AccountSession::~AccountSession() = default;

std::optional<QString> AccountSession::preferredModelForAIRequest() const {
    return modelForRequest(m_signedIn, m_model.preferredAIModelID());
}

VorqSessionStore::Record AccountSession::record() const {
    return {.email = m_profile.email,
            .token = sessionToken(),
            .refreshToken = {},
            .firstName = m_profile.firstName,
            .lastName = m_profile.lastName,
            .username = m_profile.username};
}

// The token goes first, so that whoever hears of a change finds a session that is whole.
void AccountSession::show(const VorqSessionStore::Record& record, const QByteArray& image) {
    m_tokens.hold(record.token);
    setProfile({.email = record.email,
                .firstName = record.firstName,
                .lastName = record.lastName,
                .username = record.username,
                .image = image});
}

void AccountSession::setProfile(const AccountProfile& profile) {
    if (m_profile == profile) return;
    m_profile = profile;
    emit profileChanged();
}

void AccountSession::setSignedIn(bool signedIn) {
    if (m_signedIn == signedIn) return;
    m_signedIn = signedIn;
    emit signedInChanged();
}

void AccountSession::adoptStored(const VorqSessionStore::Record& stored) {
    show(stored, m_store.readProfileImage());
    setSignedIn(true);
}

void AccountSession::adoptTokens(const VorqSessionStore::Record& stored,
                                 const std::optional<Session>& session) {
    const QPointer<AccountSession> self(this);
    adoptStored(stored);
    if (self && session) m_model.applyPreferredModelFromSession(*session);
}

void AccountSession::leaveSession() {
    m_tokens.leaveSession();
    emit sessionLeft();
}

void AccountSession::restoreSession() {
    const VorqSessionStore::Record stored = m_store.read();
    if (stored.token.isEmpty()) return forgetSession();
    leaveSession();
    adoptStored(stored);
    if (!stored.refreshToken.isEmpty()) m_tokens.refreshSoon();
}

void AccountSession::applySession(const Session& session) {
    const VorqSessionStore::Record record = m_store.recordOf(session);
    m_store.write(record);
    adoptStored(record);
    m_model.applyPreferredModelFromSession(session);
}

void AccountSession::beginSession(const Session& session) {
    leaveSession();
    if (m_store.isOfAnotherUser(session.email)) m_store.clearProfileImage();
    applySession(session);
}

void AccountSession::forgetSession() {
    leaveSession();
    show({}, {});
    setSignedIn(false);
}

void AccountSession::signOut() {
    const QString token = sessionToken();
    m_store.clear();
    forgetSession();
    emit signedOut();
    if (token.isEmpty()) return;
    m_signOutTask.release();
    m_signOutTask.restart([&api = m_api, token](std::stop_token stop) {
        return api.signOut(token, std::move(stop));
    });
}

// What another program of the user has stored meanwhile is not what was refused.
void AccountSession::markSessionExpired(const std::optional<QString>& message) {
    m_store.clearIfStill(sessionToken());
    forgetSession();
    const QStringView said = message ? trimmed(*message) : QStringView();
    emit sessionExpired(said.isEmpty() ? ServiceError::notSignedIn().message() : said.toString());
}

void AccountSession::keepProfile(const VorqSessionStore::Record& former,
                                 const VorqSessionStore::Record& changed) {
    if (m_store.writeProfile(former.token, changed)) return show(changed, m_profile.image);
    VorqSessionStore::Record stored = m_store.readFresh();
    if (stored.token.isEmpty()) return forgetSession();
    if (!former.email.isEmpty() && stored.email == former.email) {
        const QString token = stored.token;
        stored = changed;
        stored.token = token;
        m_store.writeProfile(token, stored);
    }
    adoptStored(stored);
}

void AccountSession::applyProfile(const QString& firstName, const QString& lastName,
                                  const QString& username, const QString& email) {
    const VorqSessionStore::Record former = record();
    keepProfile(former, withProfile(former, firstName, lastName, username, email));
}

void AccountSession::keepEmail(const QString& email) {
    AccountProfile profile = m_profile;
    profile.email = email;
    setProfile(profile);
    m_store.writeEmail(email);
}

QString AccountSession::keepProfileImage(const QByteArray& image) {
    if (QString problem = m_store.writeProfileImage(image); !problem.isEmpty()) return problem;
    AccountProfile profile = m_profile;
    profile.image = image;
    setProfile(profile);
    return {};
}

VorqSessionStore::Record withProfile(VorqSessionStore::Record record, const QString& firstName,
                                     const QString& lastName, const QString& username,
                                     const QString& email) {
    record.firstName = firstName;
    record.lastName = lastName;
    record.username = username;
    if (!email.isEmpty()) record.email = email;
    return record;
}

} // namespace vorq
