#include "ui/native/ShadowPlate.h"

#include "ui/native/ShadowImage.h"

#include <QQuickWindow>
#include <QSGNinePatchNode>

#include <memory>

namespace vorq {
namespace {

// A graphics card takes the nearest pixel, so that there must be one for each of the screen. What
// the processor draws takes as many points of a corner as the picture has pixels, and smooths them.
double pixelsToAPoint(const QQuickWindow& window) {
    const bool isDrawnByProcessor =
        window.rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
    return isDrawnByProcessor ? 1 : window.effectiveDevicePixelRatio();
}

} // namespace

// A BorderImage would do, but draws its corners apart where a point is one and a half pixels.

ShadowPlate::ShadowPlate(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    for (const auto signal : {&ShadowPlate::radiusChanged, &ShadowPlate::edgeChanged,
                              &ShadowPlate::marginChanged, &ShadowPlate::layersChanged})
        connect(this, signal, this, &ShadowPlate::renew);
}

void ShadowPlate::renew() {
    m_isShapeNew = true;
    update();
}

void ShadowPlate::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    update();
}

void ShadowPlate::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged) renew();
}

QSGNode* ShadowPlate::updatePaintNode(QSGNode* former, UpdatePaintNodeData*) {
    std::unique_ptr<QSGNode> owned(former);
    const int corner = m_margin + m_edge;
    if (m_edge <= 0 || width() < 2 * corner || height() < 2 * corner) return nullptr;
    // A window that is hidden gives its nodes up.
    if (!owned) {
        owned.reset(window()->createNinePatchNode());
        m_isShapeNew = true;
    }
    auto* node = static_cast<QSGNinePatchNode*>(owned.get());
    const double scale = pixelsToAPoint(*window());
    if (m_isShapeNew) {
        const QImage image = shadowImage(
            {.radius = m_radius, .edge = m_edge, .margin = m_margin, .layers = m_layers}, scale);
        node->setTexture(window()->createTextureFromImage(image));
    }
    m_isShapeNew = false;
    node->setBounds(boundingRect());
    node->setDevicePixelRatio(scale);
    node->setPadding(corner, corner, corner, corner);
    node->update();
    return owned.release();
}

} // namespace vorq
