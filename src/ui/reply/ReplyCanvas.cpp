#include "ui/reply/ReplyCanvas.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vorq {
namespace {

constexpr double arrivalStart = 0.55;
constexpr double hairsbreadth = 1e-6; // what reckoning with fractions loses

int pixelsUpTo(double points, double scale) {
    return static_cast<int>(std::ceil(points * scale - hairsbreadth));
}
int pixelsDownTo(double points, double scale) {
    return static_cast<int>(std::floor(points * scale + hairsbreadth));
}

} // namespace

ReplyCanvas::ReplyCanvas(QQuickItem& sheet, const ReplyLayout& layout)
    : QQuickItem(&sheet), m_layout(layout) {
    setFlag(ItemHasContents);
    connect(&m_arrival, &QVariantAnimation::valueChanged, this, [this](const QVariant& opacity) {
        m_look.arrivingOpacity = opacity.toDouble();
        repaintFrom(m_layout.topOf(m_look.arrivingFrom));
    });
    connect(&m_arrival, &QVariantAnimation::finished, this, [this] { m_look.arrivingFrom = -1; });
}

void ReplyCanvas::setSelection(const ReplyRange& selection) {
    m_look.selection = selection;
    repaint();
}

void ReplyCanvas::fadeIn(int row, int duration) {
    if (duration <= 0) return;
    m_look.arrivingFrom = m_look.arrivingFrom < 0 ? row : std::min(m_look.arrivingFrom, row);
    m_look.arrivingOpacity = arrivalStart;
    m_arrival.stop();
    m_arrival.setStartValue(arrivalStart);
    m_arrival.setEndValue(1.0);
    m_arrival.setDuration(duration);
    m_arrival.start();
}

void ReplyCanvas::setStrip(const QRectF& strip) {
    if (strip == m_strip) return;
    m_strip = strip;
    setPosition(strip.topLeft());
    setSize(strip.size());
    align();
    repaint();
}

void ReplyCanvas::align() {
    if (!window()) return;
    const double scale = window()->effectiveDevicePixelRatio();
    const QPointF at = parentItem()->mapToScene(m_strip.topLeft());
    const QPointF whole(std::round(at.x() * scale), std::round(at.y() * scale));
    setPosition(m_strip.topLeft() + whole / scale - at);
}

void ReplyCanvas::repaintFrom(double replyY) {
    if (replyY >= m_strip.bottom()) return;
    m_staleFrom = std::min(m_staleFrom, replyY);
    update();
}

QSGNode* ReplyCanvas::updatePaintNode(QSGNode* former, UpdatePaintNodeData*) {
    auto* node = static_cast<QSGImageNode*>(former);
    if (!isVisible()) return node;
    const double scale = window()->effectiveDevicePixelRatio();
    const bool isPainted = paintStale(scale);
    if (m_picture.isNull()) {
        delete node;
        return nullptr;
    }
    const bool isNew = node == nullptr;
    if (isNew) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Nearest);
    }
    if (isNew || isPainted)
        node->setTexture(
            window()->createTextureFromImage(m_picture, QQuickWindow::TextureHasAlphaChannel));
    node->setSourceRect(m_picture.rect());
    node->setRect(QRectF(QPointF(0, 0), QSizeF(m_picture.size()) / scale));
    return node;
}

// Answers whether anything was.
bool ReplyCanvas::paintStale(double scale) {
    const QSize size(pixelsUpTo(m_strip.width(), scale), pixelsUpTo(m_strip.height(), scale));
    if (size != m_picture.size()) {
        m_picture = size.isEmpty() ? QImage() : QImage(size, QImage::Format_ARGB32_Premultiplied);
        m_staleFrom = m_strip.top();
    }
    const double from = std::max(0.0, std::exchange(m_staleFrom, nothing) - m_strip.top());
    const QRect stale = m_picture.rect().adjusted(
        0, from < m_strip.height() ? pixelsDownTo(from, scale) : size.height(), 0, 0);
    if (stale.isEmpty()) return false;
    QPainter painter(&m_picture);
    painter.setClipRect(stale);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(stale, Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.scale(scale, scale);
    painter.translate(-m_strip.topLeft());
    paint(painter, QRectF(m_strip.left(), m_strip.top() + stale.top() / scale, m_strip.width(),
                          stale.height() / scale));
    return true;
}

void ReplyCanvas::paint(QPainter& painter, const QRectF& part) const {
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    m_layout.draw(painter, part, m_look);
}

void ReplyCanvas::itemChange(ItemChange change, const ItemChangeData& data) {
    const bool isShown = change == ItemVisibleHasChanged && data.boolValue;
    if (change == ItemDevicePixelRatioHasChanged) repaint();
    if (isShown) update();
    QQuickItem::itemChange(change, data);
}

} // namespace vorq
