#include "ui/native/ShadowPlate.h"

#include "ui/native/ShadowImage.h"

#include <QQuickWindow>
#include <QSGImageNode>

#include <array>
#include <cmath>
#include <memory>

namespace vorq {
namespace {

// Of the lines between the slices, along one side.
using SliceLines = std::array<double, 4>;

SliceLines sliceLines(double length, double corner) {
    return {0, corner, length - corner, length};
}

// From one point of a scene to another, in whole pixels of the screen.
double wholePixels(double from, double to, double scale) {
    return std::round(to * scale) - std::round(from * scale);
}

// A picture in nine slices without the one in the middle, which lies under the plate. A BorderImage
// or a QSGNinePatchNode would do, but neither keeps to the pixels of the screen: where a point is
// no whole number of them, they draw the corners apart, and the processor leaves seams.
class ShadowNode final : public QSGNode {
  public:
    explicit ShadowNode(QQuickWindow& window) {
        for (QSGImageNode*& slice : m_slices) {
            slice = window.createImageNode();
            slice->setFiltering(QSGTexture::Nearest);
            appendChildNode(slice);
        }
    }

    void setPicture(std::unique_ptr<QSGTexture> picture) {
        for (QSGImageNode* slice : m_slices)
            slice->setTexture(picture.get());
        m_picture = std::move(picture);
    }

    // The frame is in pixels of the screen, its place seen from the item.
    void place(const QRectF& frame, double scale) {
        const double side = m_picture->textureSize().width();
        const double corner = std::floor((side - 1) / 2);
        const SliceLines from = sliceLines(side, corner);
        const SliceLines xs = sliceLines(frame.width(), corner);
        const SliceLines ys = sliceLines(frame.height(), corner);
        for (std::size_t index = 0; index < m_slices.size(); ++index) {
            const std::size_t place = index < middle ? index : index + 1;
            const std::size_t row = place / 3;
            const std::size_t column = place % 3;
            const auto cell = [=](const SliceLines& across, const SliceLines& down) {
                return QRectF(QPointF(across[column], down[row]),
                              QPointF(across[column + 1], down[row + 1]));
            };
            const QRectF onScreen = cell(xs, ys).translated(frame.topLeft());
            m_slices[index]->setSourceRect(cell(from, from));
            m_slices[index]->setRect(QRectF(onScreen.topLeft() / scale, onScreen.size() / scale));
        }
    }

  private:
    static constexpr std::size_t middle = 4;

    std::array<QSGImageNode*, 8> m_slices{};
    std::unique_ptr<QSGTexture> m_picture;
};

} // namespace

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
    if (change == ItemVisibleHasChanged && data.boolValue) update();
}

QSGNode* ShadowPlate::updatePaintNode(QSGNode* former, UpdatePaintNodeData*) {
    // Most shadows lie under what is not there yet.
    if (!isVisible()) return former;
    std::unique_ptr<QSGNode> owned(former);
    const int corner = m_margin + m_edge;
    if (m_edge <= 0 || width() < 2 * corner || height() < 2 * corner) return nullptr;
    // A window that is hidden gives its nodes up.
    if (!owned) {
        owned = std::make_unique<ShadowNode>(*window());
        m_isShapeNew = true;
    }
    auto* node = static_cast<ShadowNode*>(owned.get());
    const double scale = window()->effectiveDevicePixelRatio();
    if (m_isShapeNew) {
        const QImage image = shadowImage(
            {.radius = m_radius, .edge = m_edge, .margin = m_margin, .layers = m_layers}, scale);
        node->setPicture(std::unique_ptr<QSGTexture>(window()->createTextureFromImage(image)));
    }
    m_isShapeNew = false;
    const QRectF inScene = mapRectToScene(boundingRect());
    const QPointF start = inScene.topLeft() * scale;
    const QPointF whole(std::round(start.x()), std::round(start.y()));
    node->place(QRectF(whole - start, QSizeF(wholePixels(inScene.left(), inScene.right(), scale),
                                             wholePixels(inScene.top(), inScene.bottom(), scale))),
                scale);
    return owned.release();
}

} // namespace vorq
