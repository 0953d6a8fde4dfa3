#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

class QPainter;

namespace vorq {

/// An item that is painted into a picture of its size, as a whole and only when something about it
/// has changed and it is visible. Unlike QQuickPaintedItem it keeps that picture once and not twice
/// where there is no graphics processor. Main thread; paint() while the scene is brought up to
/// date.
class PaintedItem : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS

  public:
    explicit PaintedItem(QQuickItem* parent = nullptr);

    /// In the item's own coordinates.
    virtual void paint(QPainter* painter) = 0;

  protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData*) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

  private:
    [[nodiscard]] QImage picture(QSize size);

    bool m_isDue = false; // for what changed while it was not visible
};

} // namespace vorq
