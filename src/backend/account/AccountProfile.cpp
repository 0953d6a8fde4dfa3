#include "backend/account/AccountProfile.h"

#include "support/text/Text.h"

#include <QCoreApplication>
#include <QStringList>

namespace vorq {

using namespace Qt::StringLiterals;

// An avatar without content is not the same as none.
bool operator==(const AccountProfile& one, const AccountProfile& other) {
    return one.email == other.email && one.firstName == other.firstName &&
           one.lastName == other.lastName && one.username == other.username &&
           one.image == other.image && one.image.isNull() == other.image.isNull();
}

QString AccountProfile::displayName() const {
    QStringList names;
    for (const QString* name : {&firstName, &lastName}) {
        if (const QStringView shown = trimmed(*name); !shown.isEmpty()) names << shown.toString();
    }
    if (!names.isEmpty()) return names.join(u' ');
    if (const QStringView handle = trimmed(username); !handle.isEmpty())
        return u"@"_s + handle.toString();
    return email.isEmpty() ? QCoreApplication::translate("AccountProfile", "Account") : email;
}

} // namespace vorq
