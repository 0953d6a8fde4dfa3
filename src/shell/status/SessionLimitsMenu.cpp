#include "shell/status/SessionLimitsMenu.h"

using namespace Qt::StringLiterals;

namespace vorq {

SessionLimitsMenu::SessionLimitsMenu() {
    setTitle(tr("Not in This Session"));
    tell({});
}

void SessionLimitsMenu::tell(const QStringList& reasons) {
    clear();
    for (const QString& reason : reasons)
        addFact(QString(reason).replace(u'&', u"&&"_s));
    menuAction()->setVisible(!reasons.isEmpty());
}

} // namespace vorq
