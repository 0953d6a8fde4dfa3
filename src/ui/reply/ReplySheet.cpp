#include "ui/reply/ReplySheet.h"

#include "ui/reply/ReplyCanvas.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>

namespace vorq {
namespace {

// A slice of layout leaves most of a frame to everything else.
constexpr int sliceTime = 6;
// The canvas reaches beyond what is in view and moves in steps, so that it is not painted anew for
// each pixel that is scrolled nor for each line that comes.
constexpr double overscan = 128;
constexpr double canvasStep = 256;

double stepBelow(double y) {
    return std::floor(y / canvasStep) * canvasStep;
}
double stepAbove(double y) {
    return std::ceil(y / canvasStep) * canvasStep;
}

} // namespace

ReplySheet::ReplySheet(QQuickItem* parent)
    : QQuickItem(parent), m_canvas(new ReplyCanvas(*this, m_layout)) {
    m_more.setSingleShot(true);
    m_more.setInterval(0);
    connect(&m_more, &QTimer::timeout, this, &ReplySheet::layOutNow);
}

ReplySheet::~ReplySheet() = default;

void ReplySheet::setRaw(const QString& raw) {
    if (raw == m_blocks.raw()) return;
    const ReplyBlocks::Change change = m_blocks.setRaw(raw);
    m_layout.replace(change.row, change.removed, m_blocks.blocks().mid(change.row, change.added));
    if (change.added > change.removed && m_isGrowing)
        m_canvas->fadeIn(change.row + change.removed, m_arrivalDuration);
    handleChange(change);
    layOutNow();
    emit rawChanged();
}

void ReplySheet::handleTheme() {
    m_layout.setTheme(m_theme);
    layOutNow();
    emit themeChanged();
}

void ReplySheet::setViewTop(double top) {
    if (m_viewTop == top) return;
    m_viewTop = top;
    placeCanvas();
    emit viewChanged();
}

void ReplySheet::setViewHeight(double height) {
    if (m_viewHeight == height) return;
    m_viewHeight = height;
    placeCanvas();
    emit viewChanged();
}

void ReplySheet::geometryChange(const QRectF& next, const QRectF& former) {
    QQuickItem::geometryChange(next, former);
    if (next.width() != former.width()) layOutNow();
}

void ReplySheet::layOutNow() {
    if (width() <= 0) return;
    if (!m_layout.layOut(width(), QDeadlineTimer(sliceTime))) m_more.start();
    publishLayout();
}

void ReplySheet::publishLayout() {
    setImplicitHeight(m_layout.height());
    placeCanvas();
    findCode();
    m_canvas->repaintFrom(m_layout.takeStale());
    emit layoutChanged();
}

// Paints anew once what is painted no longer reaches all of what is in view.
void ReplySheet::placeCanvas() {
    const double height = m_layout.height();
    const double top = std::clamp(m_viewTop, 0.0, height);
    const double bottom = std::clamp(m_viewTop + m_viewHeight, 0.0, height);
    m_canvas->setVisible(bottom > top);
    if (bottom <= top) return;
    const double from = std::max(0.0, stepBelow(m_viewTop - overscan));
    const double end = m_isGrowing ? stepAbove(height) : std::ceil(height);
    const QRectF strip(0, from, width(),
                       std::min(end, stepAbove(m_viewTop + m_viewHeight + overscan)) - from);
    polish();
    if (strip == m_canvas->strip()) return;
    m_canvas->setStrip(strip);
    findCode();
}

// And the next on both sides, for Tab to lead on to.
void ReplySheet::findCode() {
    QList<ReplyCodes::Code> codes;
    int number = 0;
    const QRectF& strip = m_canvas->strip();
    for (int row = 0; row < m_layout.count() && m_layout.isSet(row); ++row) {
        if (m_layout.kind(row) != AssistantReplyDocument::Kind::Code) continue;
        const QRectF plate = m_layout.blockRect(row);
        if (plate.bottom() < strip.top()) codes.clear();
        codes += {number++, plate};
        if (plate.top() > strip.bottom()) break;
    }
    m_codes.setCodes(codes);
}

// Before each frame for which the reply may have moved; where it is, is settled only then.
void ReplySheet::updatePolish() {
    m_canvas->align();
}

bool ReplySheet::beginsWithCode() const {
    return m_layout.count() > 0 && m_layout.kind(0) == AssistantReplyDocument::Kind::Code;
}

bool ReplySheet::scrollCodeAt(QPointF point, double dx) {
    const bool isMoved = m_layout.scrollAt(point, dx);
    if (isMoved) m_canvas->repaint();
    return isMoved;
}

void ReplySheet::scrollCodeTo(const ReplyPosition& position) {
    if (m_layout.scrollTo(position)) m_canvas->repaint();
}

QString ReplySheet::codeAt(int number) const {
    for (const AssistantReplyDocument::Block& block : m_blocks.blocks()) {
        if (block.kind != AssistantReplyDocument::Kind::Code) continue;
        if (number-- == 0) return block.text;
    }
    return {};
}

void ReplySheet::copyCode(int number) const {
    QGuiApplication::clipboard()->setText(codeAt(number));
}

} // namespace vorq
