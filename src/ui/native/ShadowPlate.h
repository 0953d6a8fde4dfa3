#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace vorq {

/// The soft shadow of a plate, which reaches out of it to all sides; it is drawn nowhere where the
/// plate is too small for its corners.
class ShadowPlate : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int radius MEMBER m_radius NOTIFY radiusChanged)
    Q_PROPERTY(int edge MEMBER m_edge NOTIFY edgeChanged)
    Q_PROPERTY(int margin MEMBER m_margin NOTIFY marginChanged)
    Q_PROPERTY(QString layers MEMBER m_layers NOTIFY layersChanged)

  public:
    explicit ShadowPlate(QQuickItem* parent = nullptr);

  signals:
    // One for each property: a shared one makes a binding of one on another loop.
    void radiusChanged();
    void edgeChanged();
    void marginChanged();
    void layersChanged();

  protected:
    QSGNode* updatePaintNode(QSGNode* former, UpdatePaintNodeData*) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;

  private:
    void renew();

    int m_radius = 0;
    int m_edge = 0;
    int m_margin = 0;
    QString m_layers;
    bool m_isShapeNew = true;
};

} // namespace vorq
