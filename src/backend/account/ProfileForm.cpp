#include "backend/account/ProfileForm.h"

#include "backend/account/AccountSession.h"
#include "backend/api/Session.h"
#include "backend/api/VorqAPIService.h"
#include "support/text/Text.h"

namespace vorq {
namespace {

QString normalisedUsername(const QString& username) {
    QStringView name = trimmed(username);
    while (name.startsWith(u'@'))
        name = name.sliced(1);
    while (name.endsWith(u'@'))
        name.chop(1);
    return name.toString().toLower();
}

} // namespace

QCoro::Task<bool> ProfileForm::updateProfile(QString firstName, QString lastName, QString username,
                                             std::optional<QByteArray> avatarData,
                                             std::stop_token stop) {
    const QPointer<ProfileForm> self(this);
    const QString first = trimmed(firstName).toString();
    const QString last = trimmed(lastName).toString();
    const QString handle = normalisedUsername(username);
    begin();
    if (avatarData) {
        const QString problem = account().keepProfileImage(*avatarData);
        if (!problem.isEmpty()) co_return end(problem);
    }
    if (!hasSession()) {
        account().applyProfile(first, last, handle, account().profile().email);
        co_return end({});
    }

    const quint64 number = account().tokens().sessionNumber();
    const VorqSessionStore::Record former = account().record();
    std::optional<Session> session;
    QString problem;
    try {
        session = co_await api().updateProfile(former.token, first, last, handle, stop);
    } catch (const BackendError& error) {
        problem = error.message();
    }
    if (!self || account().tokens().sessionNumber() != number) co_return false;
    if (stop.stop_requested()) co_return end({}) && false;
    if (session) {
        account().keepProfile(former,
                              withProfile(former, session->firstName.value_or(first),
                                          session->lastName.value_or(last),
                                          session->username.value_or(handle), session->email));
    }
    co_return end(problem);
}

} // namespace vorq
