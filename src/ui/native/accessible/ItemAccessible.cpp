#include "ui/native/accessible/ItemAccessible.h"

#include "support/StableSort.h"
#include "ui/native/SecretField.h"
#include "ui/native/accessible/ControlAccessible.h"
#include "ui/native/accessible/PasswordAccessible.h"

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

// Controls of the page's own, which have a role.
bool isControlOfPage(const QQuickItem& item) {
    return item.inherits("QQuickAbstractButton") && item.property("role").isValid();
}

QAccessibleInterface* interfaceOfItem(const QString&, QObject* object) {
    auto* item = qobject_cast<QQuickItem*>(object);
    if (!item || !isElement(*item)) return nullptr;
    if (isControlOfPage(*item)) return new ControlAccessible(*item);
    if (SecretField::isSecret(*item)) return new PasswordAccessible(*item);
    return item->isFocusScope() ? new ItemAccessible(*item) : nullptr;
}

} // namespace

ItemAccessible::ItemAccessible(QQuickItem& item) : QAccessibleObject(&item) {
    m_switching =
        QObject::connect(&item, &QQuickItem::enabledChanged, &item, [this] { tellOfSwitch(); });
}

ItemAccessible::~ItemAccessible() {
    QObject::disconnect(m_switching);
}

// Qt makes one anew, beside the former, where the type of the item has changed while it was made.
void ItemAccessible::tellOfSwitch() {
    if (QAccessible::queryAccessibleInterface(object()) != this) return;
    QAccessible::State changed;
    changed.disabled = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}

void ItemAccessible::install() {
    QAccessible::installFactory(interfaceOfItem);
}

QQuickItem& ItemAccessible::subject() const {
    return *static_cast<QQuickItem*>(object());
}

QObject* ItemAccessible::attached() const {
    return attachedTo(subject());
}

std::vector<QQuickItem*> ItemAccessible::elements() const {
    std::vector<QQuickItem*> found;
    collectElements(subject(), found);
    // A list makes its items in the order in which they come into view.
    const auto top = [this](const QQuickItem* item) { return item->mapToItem(&subject(), {}).y(); };
    if (role() == QAccessible::List)
        stableSort(found, [&](QQuickItem* a, QQuickItem* b) { return top(a) < top(b); });
    return found;
}

QWindow* ItemAccessible::window() const {
    return subject().window();
}

QAccessibleInterface* ItemAccessible::parent() const {
    for (QQuickItem* item = subject().parentItem(); item != nullptr; item = item->parentItem())
        if (isElement(*item)) return QAccessible::queryAccessibleInterface(item);
    return QAccessible::queryAccessibleInterface(subject().window());
}

QAccessibleInterface* ItemAccessible::focusChild() const {
    QQuickItem* holder = subject().window() ? subject().window()->activeFocusItem() : nullptr;
    if (!holder || !subject().isAncestorOf(holder)) return nullptr;
    QAccessibleInterface* element = QAccessible::queryAccessibleInterface(holder);
    QAccessibleInterface* within = element ? element->focusChild() : nullptr;
    return within ? within : element;
}

QAccessibleInterface* ItemAccessible::child(int index) const {
    const std::vector<QQuickItem*> items = elements();
    const bool isThere = index >= 0 && index < std::ssize(items);
    return isThere ? QAccessible::queryAccessibleInterface(items[static_cast<std::size_t>(index)])
                   : nullptr;
}

QAccessibleInterface* ItemAccessible::childAt(int x, int y) const {
    if (subject().clip() && !rect().contains(x, y)) return nullptr;
    const std::vector<QQuickItem*> items = elements();
    for (auto item = items.crbegin(); item != items.crend(); ++item) {
        QAccessibleInterface* element = QAccessible::queryAccessibleInterface(*item);
        if (!element || element->state().invisible) continue;
        if (QAccessibleInterface* within = element->childAt(x, y)) return within;
        if (element->rect().contains(x, y)) return element;
    }
    return nullptr;
}

int ItemAccessible::childCount() const {
    return static_cast<int>(std::ssize(elements()));
}

int ItemAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const std::vector<QQuickItem*> items = elements();
    const auto found = std::ranges::find(items, child->object());
    return found == items.end() ? -1 : static_cast<int>(std::distance(items.begin(), found));
}

QString ItemAccessible::text(QAccessible::Text kind) const {
    const QObject* page = attached();
    if (!page) return {};
    if (kind == QAccessible::Name) return page->property("name").toString();
    return kind == QAccessible::Description ? page->property("description").toString() : QString();
}

QRect ItemAccessible::rect() const {
    if (!subject().isVisible() || !subject().window()) return {};
    return QRectF(subject().mapToGlobal({0, 0}), subject().size()).toAlignedRect();
}

QAccessible::Role ItemAccessible::role() const {
    const QObject* page = attached();
    const int role = page ? page->property("role").toInt() : QAccessible::NoRole;
    return role == QAccessible::NoRole ? QAccessible::Client : static_cast<QAccessible::Role>(role);
}

QAccessible::State ItemAccessible::state() const {
    QAccessible::State state;
    state.invisible =
        !subject().isVisible() || !subject().window() || !subject().window()->isVisible();
    state.disabled = !subject().isEnabled();
    return state;
}

} // namespace vorq
