#include "ui/native/OutsidePress.h"

#include <QMouseEvent>
#include <QQuickWindow>

namespace vorq {
namespace {

bool isOn(const QQuickItem* item, QPointF inScene) {
    return item && item->contains(item->mapFromScene(inScene));
}

} // namespace

OutsidePress::OutsidePress(QQuickItem* parent) : QQuickItem(parent) {
    connect(this, &QQuickItem::enabledChanged, this, &OutsidePress::watch);
}

OutsidePress::~OutsidePress() {
    if (m_watched) m_watched->removeEventFilter(this);
}

void OutsidePress::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange) watch();
}

void OutsidePress::watch() {
    QQuickWindow* next = isEnabled() ? window() : nullptr;
    if (m_watched == next) return;
    if (m_watched) m_watched->removeEventFilter(this);
    m_watched = next;
    if (next) next->installEventFilter(this);
}

bool OutsidePress::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_watched && event->type() == QEvent::MouseButtonPress) {
        const QPointF at = static_cast<QMouseEvent*>(event)->scenePosition();
        if (!isOn(m_area, at) && !isOn(m_opener, at)) emit pressed();
    }
    return false;
}

} // namespace vorq
