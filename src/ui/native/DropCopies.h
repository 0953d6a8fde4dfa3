#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>

namespace vorq {

/// Has whatever is dragged over its window copied, whatever was proposed: whoever drags deletes
/// what was moved. An item can say so itself, but is not heard in the moment in which the mouse
/// comes over it from elsewhere in the window.
class DropCopies : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT

  public:
    using QQuickItem::QQuickItem;

    bool eventFilter(QObject* watched, QEvent* event) override;

  protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;

  private:
    QPointer<QQuickWindow> m_window;
};

} // namespace vorq
