#include "ui/native/accessible/ControlAccessible.h"

#include <QQuickItem>
#include <QQuickWindow>

namespace vorq {

QAccessible::Role ControlAccessible::role() const {
    return static_cast<QAccessible::Role>(subject().property("role").toInt());
}

QAccessible::State ControlAccessible::state() const {
    QAccessible::State state = ItemAccessible::state();
    const auto says = [item = &subject()](const char* name) {
        return item->property(name).toBool();
    };
    state.invisible = state.invisible || qFuzzyIsNull(subject().opacity());
    state.focusable = subject().activeFocusOnTab();
    state.focused = subject().hasActiveFocus();
    state.pressed = says("down");
    // Not what the page attaches: Qt overwrites that whenever somebody begins to listen.
    state.checkable = says("hasMarks") || says("checkable");
    state.checked = state.checkable && (says("isMarked") || says("checked"));
    const QQuickWindow* window = subject().window();
    state.offscreen = window != nullptr && !rect().intersects(window->geometry());
    return state;
}

void* ControlAccessible::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                : ItemAccessible::interface_cast(type);
}

QStringList ControlAccessible::actionNames() const {
    if (!subject().isEnabled()) return {};
    const QAccessible::State now = state();
    QStringList names{pressAction()};
    if (now.checkable) names += toggleAction();
    if (now.focusable) names += setFocusAction();
    return names;
}

void ControlAccessible::doAction(const QString& name) {
    if (!actionNames().contains(name)) return;
    if (name == setFocusAction())
        subject().forceActiveFocus();
    else
        QMetaObject::invokeMethod(&subject(), "press");
}

QStringList ControlAccessible::keyBindingsForAction(const QString&) const {
    return {};
}

} // namespace vorq
