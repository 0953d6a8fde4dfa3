#pragma once

#include "backend/account/AccountForm.h"

#include <QCoroTask>

#include <stop_token>

namespace vorq {

/// Changes the email address and the password of the account. Main thread only.
class PrivacyForm final : public AccountForm {
    Q_OBJECT

  public:
    /// Of a new password, in characters.
    static constexpr qsizetype shortestPassword = 8;

    /// Both must outlive the form.
    PrivacyForm(AccountSession& account, VorqAPIService& api) : AccountForm(account, api) {}

    /// Gives whether it was saved. Without a session only an email can be, on this machine. An
    /// update whose session ends meanwhile is dropped.
    QCoro::Task<bool> updatePrivacy(QString email, QString currentPassword, QString newPassword,
                                    std::stop_token stop = {});

    /// What of the last update the backend refused: "email", "currentPassword" or "newPassword"; ""
    /// where it does not say.
    [[nodiscard]] const QString& refusedField() const { return m_refusedField; }

  private:
    QString m_refusedField;
};

} // namespace vorq
