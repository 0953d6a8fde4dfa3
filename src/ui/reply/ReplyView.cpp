#include "ui/reply/ReplyView.h"

#include "rendering/SpokenReply.h"
#include "ui/native/ScreenReader.h"
#include "ui/reply/ReplyAccessible.h"
#include "ui/reply/ReplyCanvas.h"
#include "ui/reply/ReplyElements.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>

namespace vorq {
namespace {

// A slice of layout leaves most of a frame to everything else.
constexpr int sliceTime = 6;
constexpr double arrivalStart = 0.55;
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

ReplyView::ReplyView(QQuickItem* parent) : QQuickItem(parent), m_canvas(new ReplyCanvas(*this)) {
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptHoverEvents(true);
    setFlag(ItemIsFocusScope, false);
    ReplyAccessible::install();
    QAccessible::installActivationObserver(this);
    m_more.setSingleShot(true);
    m_more.setInterval(0);
    connect(&m_more, &QTimer::timeout, this, &ReplyView::layOutNow);
    connect(&m_arrival, &QVariantAnimation::valueChanged, m_canvas,
            [this] { m_canvas->repaintFrom(m_layout.topOf(m_arrivingFrom)); });
    connect(&m_arrival, &QVariantAnimation::finished, this, [this] { m_arrivingFrom = -1; });
    connect(this, &ReplyView::growingChanged, this, &ReplyView::handleGrowth);
    connect(this, &ReplyView::rawChanged, this, &ReplyView::handleGrowth);
}

ReplyView::~ReplyView() {
    QAccessible::removeActivationObserver(this);
    watchClicks(false);
    if (m_bridge && m_bridge->isWatching(this)) {
        m_bridge->watch(nullptr, nullptr);
        m_bridge->clear();
    }
}

void ReplyView::setRaw(const QString& raw) {
    if (raw == m_blocks.raw()) return;
    const ReplyBlocks::Change change = m_blocks.setRaw(raw);
    m_layout.replace(change.row, change.removed, m_blocks.blocks().mid(change.row, change.added));
    if (m_elements) m_events.forget(m_elements->followChange(change));
    if (change.added > change.removed) fadeIn(change.row + change.removed);
    moveSelection(change);
    layOutNow();
    emit rawChanged();
    m_events.handleGrowth();
}

bool ReplyView::setTheme(const ReplyTheme& theme) {
    if (m_theme == theme) return false;
    m_theme = theme;
    m_layout.setTheme(theme);
    layOutNow();
    return true;
}

void ReplyView::setBaseColor(const QColor& color) {
    ReplyTheme theme = m_theme;
    theme.ink = color;
    if (setTheme(theme)) emit colorsChanged();
}
void ReplyView::setLinkColor(const QColor& color) {
    ReplyTheme theme = m_theme;
    theme.link = color;
    if (setTheme(theme)) emit colorsChanged();
}
void ReplyView::setSelectionColor(const QColor& color) {
    ReplyTheme theme = m_theme;
    theme.selection = color;
    if (setTheme(theme)) emit colorsChanged();
}
void ReplyView::setHighContrast(bool isOn) {
    ReplyTheme theme = m_theme;
    theme.hasHighContrast = isOn;
    if (setTheme(theme)) emit highContrastChanged();
}
void ReplyView::setTextScale(double scale) {
    ReplyTheme theme = m_theme;
    theme.textScale = scale;
    if (setTheme(theme)) emit textScaleChanged();
}

void ReplyView::setViewTop(double top) {
    if (m_viewTop == top) return;
    m_viewTop = top;
    placeCanvas();
    // The pill stands beside the selection wherever it scrolls to.
    if (m_bridge && m_bridge->isWatching(this)) m_bridge->refresh();
    emit viewChanged();
}

void ReplyView::setViewHeight(double height) {
    if (m_viewHeight == height) return;
    m_viewHeight = height;
    placeCanvas();
    emit viewChanged();
}

void ReplyView::geometryChange(const QRectF& next, const QRectF& former) {
    QQuickItem::geometryChange(next, former);
    if (next.width() != former.width()) layOutNow();
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
    placeCanvas();
    findCode();
    m_canvas->repaintFrom(m_layout.takeStale());
    if (hasSelection() && m_bridge) m_bridge->refresh();
    emit layoutChanged();
}

// Paints anew once what is painted no longer reaches all of what is in view.
void ReplyView::placeCanvas() {
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
void ReplyView::findCode() {
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

// Before each frame for which the reply may have moved; where it is, is settled only then.
void ReplyView::updatePolish() {
    m_canvas->align();
}

QString ReplyView::spoken() const {
    return ScreenReader::isListening() && !m_isGrowing ? spokenReply(raw()) : QString();
}

void ReplyView::accessibilityActiveChanged(bool) {
    emit spokenChanged();
}

void ReplyView::handleGrowth() {
    if (!m_isGrowing) emit spokenChanged();
}

ReplyElements& ReplyView::elements() {
    if (!m_elements) m_elements = std::make_unique<ReplyElements>(*this);
    return *m_elements;
}

bool ReplyView::beginsWithCode() const {
    return m_layout.count() > 0 && m_layout.kind(0) == AssistantReplyDocument::Kind::Code;
}

std::optional<double> ReplyView::sidewaysHeightAt(QPointF point) const {
    for (const ReplyCodes::Code& code : m_codes.codes())
        if (code.plate.contains(point)) return code.plate.height();
    return std::nullopt;
}

QString ReplyView::codeAt(int number) const {
    for (const AssistantReplyDocument::Block& block : m_blocks.blocks()) {
        if (block.kind != AssistantReplyDocument::Kind::Code) continue;
        if (number-- == 0) return block.text;
    }
    return {};
}

void ReplyView::copyCode(int number) const {
    QGuiApplication::clipboard()->setText(codeAt(number));
}

void ReplyView::copy() const {
    QGuiApplication::clipboard()->setText(hasSelection() ? m_layout.written(selection()) : raw());
}

} // namespace vorq
