#pragma once

#include <QElapsedTimer>
#include <QPointF>

class QHoverEvent;
class QMouseEvent;
class QWheelEvent;

namespace vorq {

class ReplyView;

/// What the mouse does in a reply: it selects, by letters, words and blocks, follows links and
/// moves wide code sideways. Main thread only.
class ReplyPointer {
  public:
    /// The view must outlive this object.
    explicit ReplyPointer(ReplyView& view) : m_view(view) {}

    void handlePress(QMouseEvent& event);
    void handleMove(const QMouseEvent& event);
    void handleRelease(const QMouseEvent& event);
    void handleDoubleClick(QMouseEvent& event);
    void handleHover(QHoverEvent& event);
    void handleWheel(QWheelEvent& event);

  private:
    [[nodiscard]] bool isTripleClick() const;

    ReplyView& m_view;
    QPointF m_pressedAt;
    QElapsedTimer m_sinceDoubleClick;
    bool m_isSelecting = false;
};

} // namespace vorq
