#pragma once

#include "backend/account/AccountForm.h"

#include <QByteArray>
#include <QCoroTask>

#include <optional>
#include <stop_token>

namespace vorq {

/// Changes the names and the avatar of the account. Main thread only.
class ProfileForm final : public AccountForm {
    Q_OBJECT

  public:
    /// Both must outlive the form.
    ProfileForm(AccountSession& account, VorqAPIService& api) : AccountForm(account, api) {}

    /// Gives whether all was saved: with the account, or on this machine while nobody is signed in.
    /// An update whose session ends meanwhile is dropped.
    QCoro::Task<bool> updateProfile(QString firstName, QString lastName, QString username,
                                    std::optional<QByteArray> avatarData = {},
                                    std::stop_token stop = {});
};

} // namespace vorq
