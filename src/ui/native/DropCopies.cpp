#include "ui/native/DropCopies.h"

#include <QDropEvent>

namespace vorq {
namespace {

bool isOfDrag(const QEvent& event) {
    return event.type() == QEvent::DragEnter || event.type() == QEvent::DragMove ||
           event.type() == QEvent::Drop;
}

} // namespace

bool DropCopies::eventFilter(QObject* watched, QEvent* event) {
    if (isOfDrag(*event)) {
        auto& drop = static_cast<QDropEvent&>(*event);
        if (drop.possibleActions().testFlag(Qt::CopyAction)) drop.setDropAction(Qt::CopyAction);
    }
    return QQuickItem::eventFilter(watched, event);
}

void DropCopies::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change != ItemSceneChange) return;
    if (m_window) m_window->removeEventFilter(this);
    m_window = data.window;
    if (m_window) m_window->installEventFilter(this);
}

} // namespace vorq
