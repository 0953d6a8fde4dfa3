#include "ui/native/ScrollLock.h"

#include "shell/panel/VerticalScrollLock.h"
#include "ui/native/SidewaysScrolling.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QQuickWindow>
#include <QWheelEvent>

namespace vorq {
namespace {

constexpr QPointF nowhere(-1, -1);

// What scrolls sideways at a point, and how high it is.
struct Sideways {
    QQuickItem* item = nullptr;
    double height = 0;
    QPointF at; // in the item
};

// Under a point of the window. Items between may be smaller than what they hold.
Sideways sidewaysAt(QQuickItem& item, QPointF inWindow) {
    if (!item.isVisible()) return {};
    if (const auto* scrolling = dynamic_cast<SidewaysScrolling*>(&item)) {
        const QPointF at = item.mapFromScene(inWindow);
        const auto height = item.contains(at) ? scrolling->sidewaysHeightAt(at) : std::nullopt;
        return height ? Sideways{&item, *height, at} : Sideways();
    }
    for (QQuickItem* child : item.childItems())
        if (const Sideways found = sidewaysAt(*child, inWindow); found.item != nullptr)
            return found;
    return {};
}

QPointF deltaOf(const QWheelEvent& event) {
    return event.pixelDelta().isNull() ? QPointF(event.angleDelta()) : QPointF(event.pixelDelta());
}

// The same turn without its share up or down.
void turnSideways(const Sideways& target, const QWheelEvent& event) {
    QWheelEvent sideways(target.at, event.globalPosition(), {event.pixelDelta().x(), 0},
                         {event.angleDelta().x(), 0}, event.buttons(), event.modifiers(),
                         event.phase(), event.inverted());
    QCoreApplication::sendEvent(target.item, &sideways);
}

} // namespace

ScrollLock::~ScrollLock() {
    watch(nullptr);
}

double ScrollLock::snappedX(double contentX) {
    return snappedContentX(contentX);
}

void ScrollLock::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemSceneChange) watch(data.window);
    QQuickItem::itemChange(change, data);
}

void ScrollLock::watch(QQuickWindow* window) {
    if (m_watched) m_watched->removeEventFilter(this);
    m_watched = window;
    if (m_watched) m_watched->installEventFilter(this);
}

void ScrollLock::setDockDragging(bool isOn) {
    if (m_isDockDragging == isOn) return;
    m_isDockDragging = isOn;
    hover(m_mouse);
    emit dockDraggingChanged();
}

bool ScrollLock::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Wheel:
        return filterScroll(*static_cast<QWheelEvent*>(event));
    case QEvent::MouseMove:
        hover(static_cast<QMouseEvent*>(event)->position());
        break;
    case QEvent::Enter:
        hover(static_cast<QEnterEvent*>(event)->position());
        break;
    case QEvent::Leave:
    case QEvent::Hide:
        hover(nowhere);
        break;
    default:
        break;
    }
    return QQuickItem::eventFilter(watched, event);
}

bool ScrollLock::filterScroll(const QWheelEvent& event) const {
    if (m_view == nullptr) return false;
    if (!m_view->contains(m_view->mapFromScene(event.position()))) return false;
    const QPointF delta = deltaOf(event);
    if (!isSidewaysScroll(delta.x(), delta.y())) return false;
    const Sideways target = sidewaysAt(*m_view, event.position());
    if (target.item != nullptr) {
        if (isHorizontalTray(target.height)) return false;
        // A tall one does not hand on what goes up or down.
        turnSideways(target, event);
    }
    return true;
}

void ScrollLock::hover(QPointF inWindow) {
    m_mouse = inWindow;
    if (m_view == nullptr || m_scroller == nullptr || inWindow == nowhere)
        return setScrollerHovered(false);
    const QRectF scroller =
        m_scroller->mapRectToItem(m_view, {0, 0, m_scroller->width(), m_scroller->height()});
    setScrollerHovered(vorq::isScrollerHovered(m_view->mapFromScene(inWindow),
                                               {0, 0, m_view->width(), m_view->height()}, scroller,
                                               m_isDockDragging));
}

void ScrollLock::setScrollerHovered(bool isHovered) {
    if (m_isScrollerHovered == isHovered) return;
    m_isScrollerHovered = isHovered;
    emit scrollerHoveredChanged();
}

} // namespace vorq
