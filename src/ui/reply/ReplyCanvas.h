#pragma once

#include "ui/reply/ReplyLayout.h"

#include <QImage>
#include <QQuickItem>
#include <QVariantAnimation>

#include <limits>

namespace vorq {

/// The strip of a reply that is in view, painted. It stands on whole pixels of the screen wherever
/// the reply is, so that text is sharp at any scale. A part of it can be painted anew. Main thread
/// only.
class ReplyCanvas final : public QQuickItem {
    Q_OBJECT

  public:
    /// It stands in the item, and shows the layout. Both must outlive it.
    ReplyCanvas(QQuickItem& sheet, const ReplyLayout& layout);

    /// In the reply's coordinates.
    [[nodiscard]] const QRectF& strip() const { return m_strip; }
    void setStrip(const QRectF& strip);

    /// Moves to the nearest whole pixel of the screen.
    void align();

    /// Paints anew all of it, or what is below a height of the reply, with the next frame.
    void repaint() { repaintFrom(m_strip.top()); }
    void repaintFrom(double replyY);

    void setSelection(const ReplyRange& selection);
    /// Has the blocks from the row on come in over so many milliseconds.
    void fadeIn(int row, int duration);

  protected:
    QSGNode* updatePaintNode(QSGNode* former, UpdatePaintNodeData*) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

  private:
    [[nodiscard]] bool paintStale(double scale);
    void paint(QPainter& painter, const QRectF& part) const;

    static constexpr double nothing = std::numeric_limits<double>::infinity();

    const ReplyLayout& m_layout;
    ReplyLayout::Look m_look;
    QVariantAnimation m_arrival;
    QRectF m_strip;
    QImage m_picture;
    double m_staleFrom = nothing; // a height of the reply
};

} // namespace vorq
