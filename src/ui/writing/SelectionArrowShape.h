#pragma once

#include "ui/native/PaintedItem.h"

#include <QColor>
#include <QtQml/qqmlregistration.h>

namespace vorq {

/// The arrow of a callout: one curve with the edge of its card, under which its fill reaches, so
/// that both meet without a line between them. It fills the item, which overlaps the card by
/// `overlap`.
class SelectionArrowShape : public vorq::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool pointsUp MEMBER m_pointsUp NOTIFY pointsUpChanged)
    Q_PROPERTY(QColor fill MEMBER m_fill NOTIFY fillChanged)
    Q_PROPERTY(QColor rim MEMBER m_rim NOTIFY rimChanged)
    Q_PROPERTY(QColor hairline MEMBER m_hairline NOTIFY hairlineChanged)
    Q_PROPERTY(int overlap READ overlap CONSTANT)

  public:
    explicit SelectionArrowShape(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;
    [[nodiscard]] static int overlap() { return 3; }

  signals:
    // One for each property: a shared one makes a binding of one on another loop.
    void pointsUpChanged();
    void fillChanged();
    void rimChanged();
    void hairlineChanged();

  private:
    bool m_pointsUp = true;
    QColor m_fill = Qt::transparent;
    QColor m_rim = Qt::transparent;
    QColor m_hairline = Qt::transparent;
};

} // namespace vorq
