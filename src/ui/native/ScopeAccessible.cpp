#include "ui/native/ScopeAccessible.h"

#include "support/StableSort.h"

#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>
#include <iterator>

namespace vorq {
namespace {

// What a page says of an item to screen readers; null if it says nothing.
QObject* attachedTo(const QQuickItem& item) {
    const auto isIt = [](const QObject* child) {
        return child->inherits("QQuickAccessibleAttached");
    };
    const auto found = std::ranges::find_if(item.children(), isIt);
    return found == item.children().end() ? nullptr : *found;
}

bool isElement(const QQuickItem& item) {
    const QObject* attached = attachedTo(item);
    return attached && !attached->property("ignored").toBool();
}

void collectElements(const QQuickItem& item, std::vector<QQuickItem*>& found) {
    for (QQuickItem* child : item.childItems())
        if (isElement(*child))
            found.push_back(child);
        else
            collectElements(*child, found);
}

QAccessibleInterface* interfaceOfScope(const QString&, QObject* object) {
    auto* item = qobject_cast<QQuickItem*>(object);
    const bool isScope = item && item->isFocusScope() && isElement(*item);
    return isScope ? new ScopeAccessible(*item) : nullptr;
}

} // namespace

ScopeAccessible::ScopeAccessible(QQuickItem& scope) : QAccessibleObject(&scope) {}

void ScopeAccessible::install() {
    QAccessible::installFactory(interfaceOfScope);
}

QQuickItem& ScopeAccessible::scope() const {
    return *static_cast<QQuickItem*>(object());
}

std::vector<QQuickItem*> ScopeAccessible::elements() const {
    std::vector<QQuickItem*> found;
    collectElements(scope(), found);
    // A list makes its items in the order in which they come into view.
    const auto top = [this](const QQuickItem* item) { return item->mapToItem(&scope(), {}).y(); };
    if (role() == QAccessible::List)
        stableSort(found, [&](QQuickItem* a, QQuickItem* b) { return top(a) < top(b); });
    return found;
}

QWindow* ScopeAccessible::window() const {
    return scope().window();
}

QAccessibleInterface* ScopeAccessible::parent() const {
    for (QQuickItem* item = scope().parentItem(); item != nullptr; item = item->parentItem())
        if (isElement(*item)) return QAccessible::queryAccessibleInterface(item);
    return QAccessible::queryAccessibleInterface(scope().window());
}

QAccessibleInterface* ScopeAccessible::focusChild() const {
    QQuickItem* holder = scope().window() ? scope().window()->activeFocusItem() : nullptr;
    if (!holder || !scope().isAncestorOf(holder)) return nullptr;
    QAccessibleInterface* element = QAccessible::queryAccessibleInterface(holder);
    QAccessibleInterface* within = element ? element->focusChild() : nullptr;
    return within ? within : element;
}

QAccessibleInterface* ScopeAccessible::child(int index) const {
    const std::vector<QQuickItem*> items = elements();
    const bool isThere = index >= 0 && index < std::ssize(items);
    return isThere ? QAccessible::queryAccessibleInterface(items[static_cast<std::size_t>(index)])
                   : nullptr;
}

QAccessibleInterface* ScopeAccessible::childAt(int x, int y) const {
    if (scope().clip() && !rect().contains(x, y)) return nullptr;
    const std::vector<QQuickItem*> items = elements();
    for (auto item = items.crbegin(); item != items.crend(); ++item) {
        QAccessibleInterface* element = QAccessible::queryAccessibleInterface(*item);
        if (!element || element->state().invisible) continue;
        if (QAccessibleInterface* within = element->childAt(x, y)) return within;
        if (element->rect().contains(x, y)) return element;
    }
    return nullptr;
}

int ScopeAccessible::childCount() const {
    return static_cast<int>(std::ssize(elements()));
}

int ScopeAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const std::vector<QQuickItem*> items = elements();
    const auto found = std::ranges::find(items, child->object());
    return found == items.end() ? -1 : static_cast<int>(std::distance(items.begin(), found));
}

QString ScopeAccessible::text(QAccessible::Text kind) const {
    const QObject* attached = attachedTo(scope());
    if (!attached) return {};
    if (kind == QAccessible::Name) return attached->property("name").toString();
    return kind == QAccessible::Description ? attached->property("description").toString()
                                            : QString();
}

QRect ScopeAccessible::rect() const {
    if (!scope().isVisible() || !scope().window()) return {};
    return QRectF(scope().mapToGlobal({0, 0}), scope().size()).toAlignedRect();
}

QAccessible::Role ScopeAccessible::role() const {
    const QObject* attached = attachedTo(scope());
    const int role = attached ? attached->property("role").toInt() : QAccessible::NoRole;
    return role == QAccessible::NoRole ? QAccessible::Client : static_cast<QAccessible::Role>(role);
}

QAccessible::State ScopeAccessible::state() const {
    QAccessible::State state;
    state.invisible = !scope().isVisible() || !scope().window() || !scope().window()->isVisible();
    return state;
}

} // namespace vorq
