// What the profile and privacy pages change.

#include "backend/account/AccountSession.h"
#include "backend/api/Session.h"
#include "backend/api/VorqAPIService.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype shortestPassword = 8;

QString normalisedUsername(const QString& username) {
    QStringView name = trimmed(username);
    while (name.startsWith(u'@'))
        name = name.sliced(1);
    while (name.endsWith(u'@'))
        name.chop(1);
    return name.toString().toLower();
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

} // namespace

void AccountSession::applyProfile(const QString& firstName, const QString& lastName,
                                  const QString& username, const QString& email) {
    const VorqSessionStore::Record former = record();
    keepProfile(former, withProfile(former, firstName, lastName, username, email));
}

void AccountSession::keepProfile(const VorqSessionStore::Record& former,
                                 const VorqSessionStore::Record& changed) {
    if (m_store.writeProfile(former.token, changed)) return setIdentity(changed);
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

QCoro::Task<bool> AccountSession::updateProfile(QString firstName, QString lastName,
                                                QString username,
                                                std::optional<QByteArray> avatarData,
                                                std::stop_token stop) {
    const QPointer<AccountSession> self(this);
    const QString first = trimmed(firstName).toString();
    const QString last = trimmed(lastName).toString();
    const QString handle = normalisedUsername(username);
    change(m_isSavingProfile, true, &AccountSession::isSavingProfileChanged);
    change(m_profileError, {}, &AccountSession::profileErrorChanged);
    const auto end = [this](const QString& problem) {
        change(m_profileError, problem, &AccountSession::profileErrorChanged);
        change(m_isSavingProfile, false, &AccountSession::isSavingProfileChanged);
        return problem.isEmpty();
    };
    if (avatarData) {
        if (const QString problem = m_store.writeProfileImage(*avatarData); !problem.isEmpty())
            co_return end(problem);
        setProfileImageData(*avatarData);
    }
    if (!m_signedIn || m_sessionToken.isEmpty()) {
        applyProfile(first, last, handle, m_email);
        co_return end({});
    }

    const quint64 number = m_sessionNumber;
    const VorqSessionStore::Record former = record();
    std::optional<Session> session;
    QString problem;
    try {
        session = co_await m_api.updateProfile(former.token, first, last, handle, stop);
    } catch (const BackendError& error) {
        problem = error.message();
    }
    if (!self || m_sessionNumber != number) co_return false;
    if (stop.stop_requested()) co_return end({}) && false;
    if (session) {
        keepProfile(former, withProfile(former, session->firstName.value_or(first),
                                        session->lastName.value_or(last),
                                        session->username.value_or(handle), session->email));
    }
    co_return end(problem);
}

QString AccountSession::privacyProblem(const QString& email, const QString& currentPassword,
                                       const QString& newPassword) const {
    if (currentPassword.isEmpty()) return u"Current password is required."_s;
    if (email.isEmpty() && newPassword.isEmpty())
        return u"Enter a new email and/or a new password."_s;
    if (!newPassword.isEmpty() && !graphemeCountAtLeast(newPassword, shortestPassword))
        return u"New password must be at least 8 characters."_s;
    return {};
}

QCoro::Task<bool> AccountSession::updatePrivacy(QString email, QString currentPassword,
                                                QString newPassword, std::stop_token stop) {
    const QPointer<AccountSession> self(this);
    const QString address = trimmed(email).toString().toLower();
    const auto end = [this](const QString& problem) {
        change(m_privacyError, problem, &AccountSession::privacyErrorChanged);
        change(m_isSavingPrivacy, false, &AccountSession::isSavingPrivacyChanged);
        return problem.isEmpty();
    };
    if (const QString problem = privacyProblem(address, currentPassword, newPassword);
        !problem.isEmpty()) {
        change(m_privacyError, problem, &AccountSession::privacyErrorChanged);
        co_return false;
    }
    change(m_isSavingPrivacy, true, &AccountSession::isSavingPrivacyChanged);
    change(m_privacyError, {}, &AccountSession::privacyErrorChanged);
    if (!m_signedIn || m_sessionToken.isEmpty()) {
        if (address.isEmpty()) co_return end(u"Sign in is required to change your password."_s);
        change(m_email, address, &AccountSession::emailChanged);
        m_store.writeEmail(address);
        co_return end({});
    }

    const quint64 number = m_sessionNumber;
    const VorqSessionStore::Record former = record();
    std::optional<Session> session;
    QString problem;
    try {
        session =
            co_await m_api.updatePrivacy(former.token, address, currentPassword, newPassword, stop);
    } catch (const BackendError& error) {
        problem = error.message();
    }
    if (!self || m_sessionNumber != number) co_return false;
    if (stop.stop_requested()) co_return end({}) && false;
    if (session) {
        VorqSessionStore::Record changed = former;
        changed.email = session->email;
        if (!session->token.isEmpty()) changed.token = session->token;
        keepProfile(former, changed);
    }
    co_return end(problem);
}

} // namespace vorq
