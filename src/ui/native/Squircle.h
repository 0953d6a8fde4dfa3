#pragma once

#include "ui/native/PaintedItem.h"

#include <QColor>
#include <QtQml/qqmlregistration.h>

namespace vorq {

/// A plate of glass with continuous corners: a gradient from top to bottom, and over it, where they
/// have a colour, a wash, a highlight, grain, a rim of light inside the edge and a hairline on it.
class Squircle : public vorq::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY radiusChanged)
    Q_PROPERTY(double smoothing MEMBER m_smoothing NOTIFY smoothingChanged)
    Q_PROPERTY(QColor fillTop MEMBER m_fillTop NOTIFY fillTopChanged)
    /// Transparent for the colour of the top.
    Q_PROPERTY(QColor fillBottom MEMBER m_fillBottom NOTIFY fillBottomChanged)
    Q_PROPERTY(QColor rimTop MEMBER m_rimTop NOTIFY rimTopChanged)
    Q_PROPERTY(QColor rimBottom MEMBER m_rimBottom NOTIFY rimBottomChanged)
    Q_PROPERTY(double rimWidth MEMBER m_rimWidth NOTIFY rimWidthChanged)
    Q_PROPERTY(QColor hairline MEMBER m_hairline NOTIFY hairlineChanged)
    Q_PROPERTY(QColor specular MEMBER m_specular NOTIFY specularChanged)
    Q_PROPERTY(QColor wash MEMBER m_wash NOTIFY washChanged)
    Q_PROPERTY(double grain MEMBER m_grain NOTIFY grainChanged)

  public:
    explicit Squircle(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

  signals:
    // One for each property: a shared one makes a binding of one on another loop.
    void radiusChanged();
    void smoothingChanged();
    void fillTopChanged();
    void fillBottomChanged();
    void rimTopChanged();
    void rimBottomChanged();
    void rimWidthChanged();
    void hairlineChanged();
    void specularChanged();
    void washChanged();
    void grainChanged();

  private:
    void paintFill(QPainter& painter, const QPainterPath& body) const;
    void paintGrain(QPainter& painter, const QPainterPath& body) const;
    void paintEdges(QPainter& painter, const QPainterPath& body) const;

    double m_radius = 12;
    double m_smoothing = 0.6;
    double m_rimWidth = 1;
    double m_grain = 0;
    QColor m_fillTop = Qt::transparent;
    QColor m_fillBottom = Qt::transparent;
    QColor m_rimTop = Qt::transparent;
    QColor m_rimBottom = Qt::transparent;
    QColor m_hairline = Qt::transparent;
    QColor m_specular = Qt::transparent;
    QColor m_wash = Qt::transparent;
};

} // namespace vorq
