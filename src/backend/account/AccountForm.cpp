#include "backend/account/AccountForm.h"

#include "backend/account/AccountSession.h"

namespace vorq {

AccountForm::AccountForm(AccountSession& account, VorqAPIService& api)
    : m_account(account), m_api(api) {
    connect(&account, &AccountSession::sessionLeft, this, [this] { set(false, m_error); });
    connect(&account, &AccountSession::signedOut, this, [this] { set(false, {}); });
}

bool AccountForm::hasSession() const {
    return m_account.signedIn() && !m_account.sessionToken().isEmpty();
}

bool AccountForm::end(const QString& problem) {
    set(false, problem);
    return problem.isEmpty();
}

bool AccountForm::refuse(const QString& problem) {
    set(m_isSaving, problem);
    return false;
}

void AccountForm::set(bool isSaving, const QString& error) {
    if (m_isSaving == isSaving && m_error == error) return;
    m_isSaving = isSaving;
    m_error = error;
    emit changed();
}

} // namespace vorq
