#include "shell/status/SessionLimitsMenu.h"

namespace vorq {

SessionLimitsMenu::SessionLimitsMenu() {
    setTitle(tr("Not in This Session"));
    tell({});
}

void SessionLimitsMenu::tell(const QStringList& reasons) {
    clear();
    for (const QString& reason : reasons)
        addFact(QString(reason).replace(u'&', QStringLiteral("&&")));
    menuAction()->setVisible(!reasons.isEmpty());
}

} // namespace vorq
