#pragma once

#include <QByteArray>
#include <QMetaType>
#include <QString>

namespace vorq {

/// Who is signed in, as views show it. Without an account all of it is empty.
struct AccountProfile {
    Q_GADGET
    Q_PROPERTY(QString email MEMBER email)
    Q_PROPERTY(QString firstName MEMBER firstName)
    Q_PROPERTY(QString lastName MEMBER lastName)
    Q_PROPERTY(QString username MEMBER username)
    Q_PROPERTY(QByteArray image MEMBER image)
    Q_PROPERTY(QString displayName READ displayName)

  public:
    QString email{};
    QString firstName{};
    QString lastName{};
    QString username{};
    /// A JPEG; null if there is none.
    QByteArray image{};

    /// Full name, else "@" and the username, else the email, else "Account".
    [[nodiscard]] QString displayName() const;

    friend bool operator==(const AccountProfile& one, const AccountProfile& other);
};

} // namespace vorq
