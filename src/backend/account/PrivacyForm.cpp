#include "backend/account/PrivacyForm.h"

#include "backend/account/AccountSession.h"
#include "backend/api/Session.h"
#include "backend/api/VorqAPIService.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <QCoreApplication>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

// What is wrong with the fields as they stand, as a sentence.
QString fieldProblem(const QString& email, const QString& currentPassword,
                     const QString& newPassword) {
    if (currentPassword.isEmpty())
        return QCoreApplication::translate("PrivacyForm", "Current password is required.");
    if (email.isEmpty() && newPassword.isEmpty())
        return QCoreApplication::translate("PrivacyForm",
                                           "Enter a new email and/or a new password.");
    if (!newPassword.isEmpty() && !graphemeCountAtLeast(newPassword, PrivacyForm::shortestPassword))
        return QCoreApplication::translate("PrivacyForm",
                                           "New password must be at least 8 characters.");
    return {};
}

} // namespace

QCoro::Task<bool> PrivacyForm::updatePrivacy(QString email, QString currentPassword,
                                             QString newPassword, std::stop_token stop) {
    const QPointer<PrivacyForm> self(this);
    const QString address = trimmed(email).toString().toLower();
    m_refusedField.clear();
    QString problem = fieldProblem(address, currentPassword, newPassword);
    if (!problem.isEmpty()) co_return refuse(problem);
    begin();
    if (!hasSession()) {
        if (address.isEmpty())
            co_return end(QCoreApplication::translate(
                "PrivacyForm", "Sign in is required to change your password."));
        account().keepEmail(address);
        co_return end({});
    }

    const quint64 number = account().tokens().sessionNumber();
    const VorqSessionStore::Record former = account().record();
    std::optional<Session> session;
    QString field;
    try {
        session =
            co_await api().updatePrivacy(former.token, address, currentPassword, newPassword, stop);
    } catch (const ServiceError& error) {
        problem = error.message();
        field = error.field();
    } catch (const BackendError& error) {
        problem = error.message();
    }
    if (!self || account().tokens().sessionNumber() != number) co_return false;
    if (stop.stop_requested()) co_return end({}) && false;
    if (session) {
        VorqSessionStore::Record changed = former;
        changed.email = session->email;
        if (!session->token.isEmpty()) changed.token = session->token;
        account().keepProfile(former, changed);
    }
    m_refusedField = field;
    co_return end(problem);
}

} // namespace vorq
