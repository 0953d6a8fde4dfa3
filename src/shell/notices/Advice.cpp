#include "shell/notices/Advice.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace vorq {

// What is typed is the same in every language.
QString signInAdvice() {
    return QCoreApplication::translate("Advice", "To sign in, run: %1")
        .arg(u"vorq open \"$(vorq-gateway handoff)\""_s);
}

QString accessibilityAdvice() {
    return QCoreApplication::translate("Advice",
                                       "Vorq cannot read other applications: accessibility is off. "
                                       "Turn it on in the menu of Vorq, or run: %1")
        .arg(u"vorq enable-accessibility"_s);
}

} // namespace vorq
