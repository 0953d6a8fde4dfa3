#pragma once

#include "ui/native/PaintedItem.h"

#include <QColor>
#include <QtQml/qqmlregistration.h>

namespace vorq {

/// An icon in one colour: the inside of an SVG on a square grid, in which "currentColor" stands for
/// the colour and elements stroked in pure white are cut out of the rest.
class IconPainter : public vorq::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString markup MEMBER m_markup NOTIFY markupChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY colorChanged)
    /// The width of strokes, in units of the grid.
    Q_PROPERTY(double weight MEMBER m_weight NOTIFY weightChanged)
    Q_PROPERTY(double grid MEMBER m_grid NOTIFY gridChanged)

  public:
    explicit IconPainter(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

  signals:
    void markupChanged();
    void colorChanged();
    void weightChanged();
    void gridChanged();

  private:
    [[nodiscard]] QByteArray document(const QString& body) const;
    void render(const QString& body, QPainter& painter, const QRectF& into) const;

    QString m_markup;
    QColor m_color = Qt::white;
    double m_weight = 1.75;
    double m_grid = 24;
};

} // namespace vorq
