#pragma once

#include "ui/native/PaintedItem.h"

#include <QColor>
#include <QtQml/qqmlregistration.h>

namespace vorq {

/// An icon of src/ui/icons/ in one colour, drawn anew at each size and scale.
class IconPainter : public vorq::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// Of its file, without the suffix; "square" is drawn for one that is not there.
    Q_PROPERTY(QString name MEMBER m_name NOTIFY nameChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY colorChanged)
    /// The width of strokes, in units of the icon's grid of 24.
    Q_PROPERTY(double weight MEMBER m_weight NOTIFY weightChanged)

  public:
    explicit IconPainter(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

  signals:
    void nameChanged();
    void colorChanged();
    void weightChanged();

  private:
    void render(const QString& drawing, QPainter& painter, const QRectF& into) const;

    QString m_name;
    QColor m_color = Qt::white;
    double m_weight = 1.75;
};

} // namespace vorq
