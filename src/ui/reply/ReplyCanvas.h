#pragma once

#include <QImage>
#include <QQuickItem>

#include <limits>

namespace vorq {

class ReplyView;

/// The strip of a reply that is in view, painted. It stands on whole pixels of the screen wherever
/// the reply is, so that text is sharp at any scale. A part of it can be painted anew. Main thread
/// only.
class ReplyCanvas final : public QQuickItem {
    Q_OBJECT

  public:
    explicit ReplyCanvas(ReplyView& view);

    /// In the reply's coordinates.
    [[nodiscard]] const QRectF& strip() const { return m_strip; }
    void setStrip(const QRectF& strip);

    /// Moves to the nearest whole pixel of the screen.
    void align();

    /// Paints anew all of it, or what is below a height of the reply, with the next frame.
    void repaint() { repaintFrom(m_strip.top()); }
    void repaintFrom(double replyY);

  protected:
    QSGNode* updatePaintNode(QSGNode* former, UpdatePaintNodeData*) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

  private:
    [[nodiscard]] bool paintStale(double scale);
    void paint(QPainter& painter, const QRectF& part) const;

    static constexpr double nothing = std::numeric_limits<double>::infinity();

    ReplyView& m_view;
    QRectF m_strip;
    QImage m_picture;
    double m_staleFrom = nothing; // a height of the reply
};

} // namespace vorq
