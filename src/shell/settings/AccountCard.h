#pragma once

#include "shell/settings/AvatarPicture.h"
#include "shell/settings/AvatarReader.h"
#include "support/async/TaskSlot.h"

#include <QByteArray>
#include <QCoroTask>
#include <QObject>
#include <QString>

#include <stop_token>

namespace vorq {

class AccountSession;

/// Who is signed in, as the settings show it. Main thread only.
class AccountCard final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString name READ name NOTIFY changed)
    Q_PROPERTY(QString email READ email NOTIFY changed)
    /// Of the name, two letters at most.
    Q_PROPERTY(QString initials READ initials NOTIFY changed)
    Q_PROPERTY(vorq::AvatarPicture* picture READ picture CONSTANT)

  public:
    /// The account must outlive the card.
    AccountCard(AccountSession& account, const AvatarReader& reader);

    [[nodiscard]] QString name() const;
    [[nodiscard]] QString email() const;
    [[nodiscard]] QString initials() const;
    [[nodiscard]] AvatarPicture* picture() { return &m_picture; }

    Q_INVOKABLE void signOut();

  signals:
    void changed();
    /// By the user.
    void signedOut();

  private:
    void follow();
    static QCoro::Task<> decode(AccountCard* self, std::stop_token stop);

    AccountSession& m_account;
    AvatarReader m_reader;
    AvatarPicture m_picture;
    QByteArray m_shown; // what the picture is decoded from
    TaskSlot m_task;
};

/// The first letters of the first and the last word, in capitals; "" for none.
[[nodiscard]] QString initialsOf(const QString& name);

} // namespace vorq
