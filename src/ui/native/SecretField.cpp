#include "ui/native/SecretField.h"

#include <QAccessible>

namespace vorq {
namespace {

constexpr const char* mark = "vorqIsSecret";

} // namespace

bool SecretField::isSecret(const QQuickItem& item) {
    return item.property(mark).toBool();
}

void SecretField::setTarget(QQuickItem* target) {
    if (m_target == target) return;
    m_target = target;
    if (target) {
        target->setProperty(mark, true);
        // Readers may have met Qt's own form of it while the page was made.
        if (QAccessibleInterface* former = QAccessible::queryAccessibleInterface(target))
            QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(former));
    }
    emit targetChanged();
}

} // namespace vorq
