#include "ui/reply/ReplyAccessible.h"

#include "ui/reply/ReplyElements.h"
#include "ui/reply/ReplyView.h"

#include <QQuickWindow>

namespace vorq {
namespace {

QAccessibleInterface* interfaceOfReply(const QString&, QObject* object) {
    auto* view = qobject_cast<ReplyView*>(object);
    return view ? new ReplyAccessible(*view) : nullptr;
}

} // namespace

ReplyAccessible::ReplyAccessible(ReplyView& view) : QAccessibleObject(&view) {}

void ReplyAccessible::install() {
    QAccessible::installFactory(interfaceOfReply);
}

ReplyView& ReplyAccessible::view() const {
    return *static_cast<ReplyView*>(object());
}

ReplyRange ReplyAccessible::span() const {
    return {{}, view().layout().end()};
}

QWindow* ReplyAccessible::window() const {
    return view().window();
}

// Not all items are elements; the nearest around this one that is.
QAccessibleInterface* ReplyAccessible::parent() const {
    for (QQuickItem* item = view().parentItem(); item != nullptr; item = item->parentItem())
        if (QAccessibleInterface* element = QAccessible::queryAccessibleInterface(item))
            return element;
    return QAccessible::queryAccessibleInterface(view().window());
}

QAccessibleInterface* ReplyAccessible::focusChild() const {
    if (!view().hasActiveFocus()) return nullptr;
    ReplyElements& elements = view().elements();
    const bool isInText = view().selection().isCaretShown() && childCount() > 0;
    return isInText ? elements.at(elements.keyAt(view().selection().cursor())) : elements.reply();
}

QAccessibleInterface* ReplyAccessible::child(int index) const {
    if (index < 0 || index >= childCount()) return nullptr;
    ReplyElements& elements = view().elements();
    return elements.at(elements.keyOf(index));
}

int ReplyAccessible::childCount() const {
    return view().layout().count();
}

int ReplyAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto* element = dynamic_cast<const ReplyElement*>(child);
    return element && child->parent() == this ? element->key().block : -1;
}

QString ReplyAccessible::text(QAccessible::Text kind) const {
    return kind == QAccessible::Name ? ReplyView::tr("Reply") : QString();
}

QRect ReplyAccessible::rect() const {
    return onScreen(view(), view().boundingRect());
}

QAccessible::State ReplyAccessible::state() const {
    const bool isInView =
        view().viewTop() < view().height() && view().viewTop() + view().viewHeight() > 0;
    QAccessible::State state;
    state.focusable = true;
    // Only one has the keyboard: the text that the caret is in, once there is one.
    state.focused =
        view().hasActiveFocus() && !(view().selection().isCaretShown() && childCount() > 0);
    state.multiLine = true;
    state.selectableText = true;
    state.invisible = !view().isVisible() || !window() || !window()->isVisible();
    state.offscreen = !isInView;
    return state;
}

void* ReplyAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::ActionInterface) return static_cast<QAccessibleActionInterface*>(this);
    return nullptr;
}

QStringList ReplyAccessible::actionNames() const {
    return {setFocusAction()};
}

void ReplyAccessible::doAction(const QString& name) {
    if (name == setFocusAction()) view().forceActiveFocus(Qt::OtherFocusReason);
}

} // namespace vorq
