#include "ui/native/accessible/ApplicationAccessible.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <iterator>

namespace vorq {
namespace {

QAccessibleInterface* interfaceOfApplication(const QString&, QObject* object) {
    return object == qGuiApp ? new ApplicationAccessible : nullptr;
}

// What stands below another menu is that one's to tell.
bool standsAlone(const QAccessibleInterface& popup) {
    const QAccessibleInterface* above = popup.parent();
    return above != nullptr && above->object() == qGuiApp;
}

} // namespace

void ApplicationAccessible::install() {
    QAccessible::installFactory(interfaceOfApplication);
}

std::vector<QAccessibleInterface*> ApplicationAccessible::windows() const {
    std::vector<QAccessibleInterface*> found;
    for (const QWindow* window : QGuiApplication::topLevelWindows()) {
        const bool isPopup = window->type() == Qt::Popup;
        if (window->type() == Qt::Desktop || (isPopup && !window->isVisible())) continue;
        QAccessibleInterface* root = window->accessibleRoot();
        if (root == nullptr || root->object() == nullptr) continue;
        if (isPopup && !standsAlone(*root)) continue;
        found.push_back(root);
    }
    return found;
}

QAccessibleInterface* ApplicationAccessible::child(int index) const {
    const std::vector<QAccessibleInterface*> all = windows();
    const bool isThere = index >= 0 && index < std::ssize(all);
    return isThere ? all[static_cast<std::size_t>(index)] : nullptr;
}

int ApplicationAccessible::childCount() const {
    return static_cast<int>(std::ssize(windows()));
}

int ApplicationAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const std::vector<QAccessibleInterface*> all = windows();
    const auto found = std::ranges::find_if(all, [child](const QAccessibleInterface* window) {
        return child != nullptr && window->object() == child->object();
    });
    return found == all.end() ? -1 : static_cast<int>(std::distance(all.begin(), found));
}

} // namespace vorq
