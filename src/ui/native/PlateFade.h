#pragma once

#include "ui/native/Squircle.h"

#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace vorq {

/// A strip of the plate beneath it, fading out towards one edge, so that a list runs out under the
/// glass without a mask, which not every renderer knows.
class PlateFade : public vorq::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(vorq::Squircle* plate READ plate WRITE setPlate NOTIFY plateChanged)
    Q_PROPERTY(bool solidAtTop MEMBER m_solidAtTop NOTIFY solidAtTopChanged)

  public:
    explicit PlateFade(QQuickItem* parent = nullptr);

    [[nodiscard]] Squircle* plate() const { return m_plate; }
    void setPlate(Squircle* plate);

    void paint(QPainter* painter) override;

  signals:
    void plateChanged();
    void solidAtTopChanged();

  private:
    QPointer<Squircle> m_plate;
    bool m_solidAtTop = true;
};

} // namespace vorq
