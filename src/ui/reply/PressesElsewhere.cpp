#include "ui/reply/PressesElsewhere.h"

#include "shell/panel/PanelSelectionBridge.h"
#include "ui/reply/ReplyView.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QQuickWindow>

namespace vorq {

void PressesElsewhere::watch(bool isOn) {
    if (m_isWatching == isOn) return;
    m_isWatching = isOn;
    if (isOn)
        qGuiApp->installEventFilter(this);
    else
        qGuiApp->removeEventFilter(this);
}

bool PressesElsewhere::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::MouseButtonPress) return false;
    // Each press passes by its window and then by items; only the first counts.
    const auto* pressed = qobject_cast<QWindow*>(watched);
    const QQuickWindow* window = m_view.window();
    const PanelSelectionBridge* bridge = m_view.bridge();
    if (!pressed || !window || !bridge || !bridge->isWatching(&m_view)) return false;
    const QPointF at = static_cast<QMouseEvent*>(event)->globalPosition();
    const bool isPopup = pressed->type() == Qt::Popup;
    // A menu over this window is about what is selected. A press beside it comes to it, too.
    if (isPopup && pressed->transientParent() == window && QRectF(pressed->geometry()).contains(at))
        return false;
    PanelSelectionBridge::Click click;
    click.isInOtherWindow =
        pressed != window && !(isPopup && QRectF(window->geometry()).contains(at));
    click.globalPoint = at;
    click.point = m_view.container() ? m_view.container()->mapFromGlobal(at) : at;
    if (bridge->shouldClearSelection(click)) m_view.clearSelection();
    return false;
}

} // namespace vorq
