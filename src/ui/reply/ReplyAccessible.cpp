#include "ui/reply/ReplyAccessible.h"

#include "rendering/SpokenReply.h"
#include "ui/reply/ReplyView.h"

#include <QQuickWindow>

#include <algorithm>

namespace vorq {
namespace {

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    auto* view = qobject_cast<ReplyView*>(object);
    return view ? new ReplyAccessible(*view) : nullptr;
}

} // namespace

ReplyAccessible::ReplyAccessible(ReplyView& view) : QAccessibleObject(&view) {}

void ReplyAccessible::install() {
    static const bool isInstalled = [] {
        QAccessible::installFactory(interfaceOf);
        return true;
    }();
    Q_UNUSED(isInstalled);
}

void ReplyAccessible::selectionMoved(ReplyView& view) {
    if (!QAccessible::isActive()) return;
    const ReplyLayout& layout = view.layout();
    const ReplyRange range = view.selection();
    QAccessibleTextSelectionEvent event(&view, static_cast<int>(layout.offsetOf(range.from)),
                                        static_cast<int>(layout.offsetOf(range.to)));
    event.setCursorPosition(static_cast<int>(layout.offsetOf(view.cursor())));
    QAccessible::updateAccessibility(&event);
}

ReplyView& ReplyAccessible::view() const {
    return *static_cast<ReplyView*>(object());
}

const ReplyLayout& ReplyAccessible::layout() const {
    return view().layout();
}

QRect ReplyAccessible::onScreen(const QRectF& inView) const {
    return QRectF(view().mapToGlobal(inView.topLeft()), inView.size()).toAlignedRect();
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

QAccessibleInterface* ReplyAccessible::child(int) const {
    return nullptr;
}

QString ReplyAccessible::text(QAccessible::Text kind) const {
    return kind == QAccessible::Name ? spokenReply(view().raw()) : QString();
}

QRect ReplyAccessible::rect() const {
    return onScreen(view().boundingRect());
}

QAccessible::State ReplyAccessible::state() const {
    const bool isInView =
        view().viewTop() < view().height() && view().viewTop() + view().viewHeight() > 0;
    QAccessible::State state;
    state.focusable = true;
    state.focused = view().hasActiveFocus();
    state.readOnly = true;
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

void ReplyAccessible::selection(int index, int* start, int* end) const {
    const ReplyRange range = index == 0 ? view().selection() : ReplyRange();
    *start = static_cast<int>(layout().offsetOf(range.from));
    *end = static_cast<int>(layout().offsetOf(range.to));
}

int ReplyAccessible::selectionCount() const {
    return view().hasSelection() ? 1 : 0;
}

void ReplyAccessible::addSelection(int start, int end) {
    view().select(layout().positionOf(start), layout().positionOf(end));
}

void ReplyAccessible::removeSelection(int) {
    view().clearSelection();
}

void ReplyAccessible::setSelection(int, int start, int end) {
    addSelection(start, end);
}

int ReplyAccessible::cursorPosition() const {
    return static_cast<int>(layout().offsetOf(view().cursor()));
}

void ReplyAccessible::setCursorPosition(int position) {
    addSelection(position, position);
}

QString ReplyAccessible::text(int start, int end) const {
    const qsizetype from = std::max(0, start);
    const qsizetype to = end < 0 ? characterCount() : end;
    return from < to ? layout().text({layout().positionOf(from), layout().positionOf(to)})
                     : QString();
}

int ReplyAccessible::characterCount() const {
    return static_cast<int>(layout().offsetOf(layout().end()));
}

QRect ReplyAccessible::characterRect(int offset) const {
    const ReplyPosition from = layout().positionOf(offset);
    const QRectF glyph = layout().firstLineRect({from, layout().positionOf(offset + 1)});
    return onScreen(glyph.isNull() ? layout().cursorRect(from) : glyph);
}

int ReplyAccessible::offsetAtPoint(const QPoint& point) const {
    const QPointF at = view().mapFromGlobal(point);
    if (!view().contains(at)) return -1;
    return static_cast<int>(layout().offsetOf(layout().positionAt(at)));
}

QString ReplyAccessible::attributes(int, int* start, int* end) const {
    *start = 0;
    *end = characterCount();
    return {};
}

QStringList ReplyAccessible::actionNames() const {
    return {setFocusAction()};
}

void ReplyAccessible::doAction(const QString& name) {
    if (name == setFocusAction()) view().forceActiveFocus(Qt::OtherFocusReason);
}

} // namespace vorq
