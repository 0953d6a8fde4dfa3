#pragma once

#include <QQuickImageProvider>

namespace vorq {

/// Soft shadows as nine-slice images, without what lies under the plate itself, so that translucent
/// glass stays clean. An address is "image://shadow/RADIUS/EDGE/MARGIN/DY,BLUR,ALPHA/…": the radius
/// of the plate, how far its corner reaches, how far the shadow reaches out, and its layers.
class ShadowProvider final : public QQuickImageProvider {
  public:
    ShadowProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

    QImage requestImage(const QString& id, QSize* size, const QSize& requested) override;
};

} // namespace vorq
