#pragma once

#include <QQuickPaintedItem>

namespace vorq {

class ReplyView;

/// The strip of a reply that is in view, painted. Main thread only.
class ReplyCanvas final : public QQuickPaintedItem {
    Q_OBJECT

  public:
    explicit ReplyCanvas(ReplyView& view);

    void paint(QPainter* painter) override;

    /// Paints anew all of it, or what is below a height of the reply, with the next frame.
    void repaint() { repaintFrom(y()); }
    void repaintFrom(double replyY);

  protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

  private:
    ReplyView& m_view;
};

} // namespace vorq
