#pragma once

#include <QPointF>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

class QWheelEvent;

namespace vorq {

/// Keeps a scrolling view to vertical motion and says when its scroller is called up. It looks at
/// the wheel and the mouse before any item of the window does: a sideways turn of the wheel is
/// swallowed over the view, and goes sideways only in what scrolls so itself. Main thread only.
class ScrollLock : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem* view MEMBER m_view NOTIFY viewChanged)
    Q_PROPERTY(QQuickItem* scroller MEMBER m_scroller NOTIFY scrollerChanged)
    /// While the whole panel is dragged no scroller shows.
    Q_PROPERTY(
        bool isDockDragging READ isDockDragging WRITE setDockDragging NOTIFY dockDraggingChanged)
    Q_PROPERTY(bool isScrollerHovered READ isScrollerHovered NOTIFY scrollerHoveredChanged)

  public:
    explicit ScrollLock(QQuickItem* parent = nullptr) : QQuickItem(parent) {}
    ~ScrollLock() override;

    [[nodiscard]] bool isDockDragging() const { return m_isDockDragging; }
    void setDockDragging(bool isOn);
    [[nodiscard]] bool isScrollerHovered() const { return m_isScrollerHovered; }

    /// Where a view at this place belongs.
    Q_INVOKABLE [[nodiscard]] static double snappedX(double contentX);

  signals:
    void viewChanged();
    void scrollerChanged();
    void dockDraggingChanged();
    void scrollerHoveredChanged();

  protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void watch(QQuickWindow* window);
    [[nodiscard]] bool filterScroll(const QWheelEvent& event) const;
    void hover(QPointF inWindow);
    void setScrollerHovered(bool isHovered);

    QPointer<QQuickWindow> m_watched;
    QPointer<QQuickItem> m_view;
    QPointer<QQuickItem> m_scroller;
    QPointF m_mouse{-1, -1}; // in the window
    bool m_isDockDragging = false;
    bool m_isScrollerHovered = false;
};

} // namespace vorq
