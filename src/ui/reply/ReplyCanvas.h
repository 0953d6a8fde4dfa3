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

  private:
    ReplyView& m_view;
};

} // namespace vorq
