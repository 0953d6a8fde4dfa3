#include "ui/reply/ReplyView.h"

#include "ui/reply/ReplyCanvas.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>

namespace vorq {
namespace {

// A slice of layout leaves most of a frame to everything else.
constexpr int sliceTime = 6;
constexpr double arrivalStart = 0.55;
// The canvas reaches beyond what is in view, so that it is not painted anew for each scroll step.
constexpr double overscan = 240;

} // namespace

ReplyView::ReplyView(QQuickItem* parent) : QQuickItem(parent), m_canvas(new ReplyCanvas(*this)) {
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptHoverEvents(true);
    setFlag(ItemIsFocusScope, false);
    m_more.setSingleShot(true);
    m_more.setInterval(0);
    connect(&m_more, &QTimer::timeout, this, &ReplyView::layOutNow);
    connect(&m_arrival, &QVariantAnimation::valueChanged, m_canvas, [this] { m_canvas->update(); });
    connect(&m_arrival, &QVariantAnimation::finished, this, [this] { m_arrivingFrom = -1; });
    connectModel();
}

ReplyView::~ReplyView() {
    watchClicks(false);
    if (m_bridge && m_bridge->isWatching(this)) {
        m_bridge->watch(nullptr, nullptr);
        m_bridge->clear();
    }
}

void ReplyView::connectModel() {
    connect(&m_blocks, &ReplyBlocksModel::dataChanged, this,
            [this](const QModelIndex& first, const QModelIndex& last) {
                const int count = last.row() - first.row() + 1;
                replaceBlocks(first.row(), count, count);
            });
    connect(&m_blocks, &ReplyBlocksModel::rowsInserted, this,
            [this](const QModelIndex&, int first, int last) {
                replaceBlocks(first, 0, last - first + 1);
                fadeIn(first);
            });
    connect(&m_blocks, &ReplyBlocksModel::rowsRemoved, this,
            [this](const QModelIndex&, int first, int last) {
                replaceBlocks(first, last - first + 1, 0);
            });
}

void ReplyView::replaceBlocks(int row, int removed, int added) {
    m_layout.replace(row, removed, m_blocks.blocks().mid(row, added));
}

void ReplyView::setRaw(const QString& raw) {
    if (raw == m_blocks.raw()) return;
    m_blocks.setRaw(raw);
    dropLostSelection();
    layOutNow();
    emit rawChanged();
}

void ReplyView::setColors(const ReplyColors& colors) {
    if (m_colors == colors) return;
    m_colors = colors;
    m_layout.setColors(colors);
    layOutNow();
    emit colorsChanged();
}

void ReplyView::setBaseColor(const QColor& color) {
    setColors({color, m_colors.link, m_colors.selection});
}
void ReplyView::setLinkColor(const QColor& color) {
    setColors({m_colors.ink, color, m_colors.selection});
}
void ReplyView::setSelectionColor(const QColor& color) {
    setColors({m_colors.ink, m_colors.link, color});
}

void ReplyView::setViewTop(double top) {
    if (m_viewTop == top) return;
    m_viewTop = top;
    placeCanvas(false);
    // The pill stands beside the selection wherever it scrolls to.
    if (m_bridge && m_bridge->isWatching(this)) m_bridge->refresh();
    emit viewChanged();
}

void ReplyView::setViewHeight(double height) {
    if (m_viewHeight == height) return;
    m_viewHeight = height;
    placeCanvas(false);
    emit viewChanged();
}

void ReplyView::geometryChange(const QRectF& next, const QRectF& former) {
    QQuickItem::geometryChange(next, former);
    if (next.width() != former.width()) layOutNow();
    if (next.height() != former.height()) placeCanvas(true);
}

void ReplyView::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange && !data.window) watchClicks(false);
}

void ReplyView::layOutNow() {
    if (width() <= 0) return;
    if (!m_layout.layOut(width(), QDeadlineTimer(sliceTime))) m_more.start();
    publishLayout();
}

void ReplyView::publishLayout() {
    setImplicitHeight(m_layout.height());
    QVariantList rects;
    for (int row = 0; row < m_layout.count(); ++row)
        if (m_layout.kind(row) == AssistantReplyDocument::Kind::Code && m_layout.isSet(row))
            rects += m_layout.blockRect(row);
    if (rects != m_codeRects) {
        m_codeRects = rects;
        emit codeRectsChanged();
    }
    placeCanvas(true);
    if (hasSelection() && m_bridge) m_bridge->refresh();
    emit layoutChanged();
}

// Paints anew if what is painted is stale or no longer reaches all of what is in view.
void ReplyView::placeCanvas(bool isStale) {
    const double height = m_layout.height();
    const double top = std::clamp(m_viewTop, 0.0, height);
    const double bottom = std::clamp(m_viewTop + m_viewHeight, 0.0, height);
    const bool isCovered = m_canvas->y() <= top && m_canvas->y() + m_canvas->height() >= bottom &&
                           m_canvas->width() == width();
    if (isCovered && !isStale) return;
    m_canvas->setVisible(bottom > top);
    const double from = std::floor(std::max(0.0, top - overscan));
    const double to = std::ceil(std::min(height, bottom + overscan));
    m_canvas->setY(from);
    m_canvas->setSize({width(), std::max(0.0, to - from)});
    m_canvas->update();
}

void ReplyView::fadeIn(int row) {
    if (!m_isGrowing || m_arrivalDuration <= 0) return;
    m_arrivingFrom = m_arrivingFrom < 0 ? row : std::min(m_arrivingFrom, row);
    m_arrival.stop();
    m_arrival.setStartValue(arrivalStart);
    m_arrival.setEndValue(1.0);
    m_arrival.setDuration(m_arrivalDuration);
    m_arrival.start();
}

double ReplyView::arrivalOpacity() const {
    return m_arrivingFrom < 0 ? 1.0 : m_arrival.currentValue().toDouble();
}

void ReplyView::updatePolish() {
    layOutNow();
}

QString ReplyView::codeAt(int index) const {
    for (const AssistantReplyDocument::Block& block : m_blocks.blocks()) {
        if (block.kind != AssistantReplyDocument::Kind::Code) continue;
        if (index-- == 0) return block.text;
    }
    return {};
}

void ReplyView::copyCode(int index) const {
    QGuiApplication::clipboard()->setText(codeAt(index));
}

void ReplyView::copy() const {
    QGuiApplication::clipboard()->setText(hasSelection() ? m_layout.text(selection()) : raw());
}

} // namespace vorq
