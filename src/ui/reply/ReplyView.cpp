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

// So near to glyphs a press means them.
constexpr double glyphSlack = 16;
constexpr double lineSlack = 8;

} // namespace

ReplyView::ReplyView(QQuickItem* parent) : ReplySheet(parent) {
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptHoverEvents(true);
    setFlag(ItemIsFocusScope, false);
    ReplyAccessible::install();
    QAccessible::installActivationObserver(this);
    connect(this, &ReplyView::growingChanged, this, &ReplyView::tellSpoken);
    connect(this, &ReplyView::rawChanged, this, &ReplyView::tellSpoken);
    connect(this, &ReplyView::rawChanged, this, [this] { m_events.handleGrowth(); });
    const auto moveBounds = [this] {
        if (m_bridge && m_bridge->isWatching(this)) m_bridge->refresh();
    };
    // The pill stands beside the selection wherever it scrolls to.
    connect(this, &ReplyView::layoutChanged, this, moveBounds);
    connect(this, &ReplyView::viewChanged, this, moveBounds);
}

ReplyView::~ReplyView() {
    QAccessible::removeActivationObserver(this);
    if (m_bridge && m_bridge->isWatching(this)) {
        m_bridge->watch(nullptr, nullptr);
        m_bridge->clear();
    }
}

void ReplyView::handleChange(const ReplyBlocks::Change& change) {
    if (m_elements) m_events.forget(m_elements->followChange(change));
    if (m_selection.followChange(change)) handleSelectionMove();
}

void ReplyView::itemChange(ItemChange change, const ItemChangeData& data) {
    ReplySheet::itemChange(change, data);
    if (change == ItemSceneChange && !data.window) m_pressesElsewhere.watch(false);
}

void ReplyView::select(ReplyPosition anchor, ReplyPosition cursor) {
    if (m_selection.select(anchor, cursor)) handleSelectionMove();
}

void ReplyView::clearSelection() {
    select(m_selection.cursor(), m_selection.cursor());
}

void ReplyView::handleSelectionMove() {
    if (m_bridge) {
        if (hasSelection() && !m_bridge->isWatching(this)) m_bridge->watch(this, this);
        if (m_bridge->isWatching(this)) m_bridge->refresh();
    }
    m_pressesElsewhere.watch(hasSelection());
    canvas().setSelection(m_selection.range());
    m_events.handleCaretMove();
    emit selectionChanged();
    if (m_selection.isCaretShown()) emit caretChanged();
}

std::optional<QString> ReplyView::selectedText() const {
    return m_selection.text();
}

std::optional<QRectF> ReplyView::layoutSelectionRect() const {
    const QRectF line = layout().firstLineRect(m_selection.range());
    if (line.isNull()) return std::nullopt;
    return m_container ? mapRectToItem(m_container, line) : line;
}

bool ReplyView::isPointInSelection(QPointF globalPoint) const {
    return layout().covers(mapFromGlobal(globalPoint), m_selection.range());
}

bool ReplyView::hasGlyphsAt(QPointF globalPoint) const {
    const QPointF at = mapFromGlobal(globalPoint);
    const ReplyRange all{{}, layout().end()};
    for (const double dx : {0.0, -glyphSlack, glyphSlack})
        for (const double dy : {0.0, -lineSlack, lineSlack})
            if (layout().covers(at + QPointF(dx, dy), all)) return true;
    return false;
}

std::optional<double> ReplyView::sidewaysHeightAt(QPointF point) const {
    for (const ReplyCodes::Code& code : codes().codes())
        if (code.plate.contains(point)) return code.plate.height();
    return std::nullopt;
}

void ReplyView::hoverEnterEvent(QHoverEvent* event) {
    event->ignore();
}

void ReplyView::hoverLeaveEvent(QHoverEvent* event) {
    event->ignore();
}

void ReplyView::keyPressEvent(QKeyEvent* event) {
    event->setAccepted(m_keys.handleKey(*event));
}

void ReplyView::focusInEvent(QFocusEvent* event) {
    m_keys.handleFocus(event->reason());
    emit caretChanged();
    m_events.handleFocus(); // in place of what items tell themselves
}

void ReplyView::focusOutEvent(QFocusEvent* event) {
    m_keys.handleFocusLoss(event->reason());
    emit caretChanged();
    QQuickItem::focusOutEvent(event);
}

void ReplyView::setVisualFocus(bool isVisual) {
    if (m_hasVisualFocus == isVisual) return;
    m_hasVisualFocus = isVisual;
    emit visualFocusChanged();
}

QRectF ReplyView::caret() const {
    const bool isThere = m_selection.isCaretShown() && hasActiveFocus() && !hasSelection();
    return isThere ? layout().cursorRect(m_selection.cursor()) : QRectF();
}

QPointF ReplyView::menuPlace() const {
    const bool isSomewhere = m_selection.isCaretShown() || hasSelection();
    const QPointF at =
        isSomewhere ? layout().cursorRect(m_selection.cursor()).bottomLeft() : QPointF();
    const double bottom = std::min(height(), viewTop() + viewHeight());
    const double top = std::clamp(viewTop(), 0.0, std::max(0.0, bottom));
    return {std::clamp(at.x(), 0.0, std::max(0.0, width())),
            std::clamp(at.y(), top, std::max(top, bottom))};
}

void ReplyView::setCaretShown(bool isShown) {
    if (m_selection.setCaretShown(isShown)) emit caretChanged();
}

void ReplyView::moveCaret(ReplyPosition anchor, ReplyPosition cursor) {
    const bool comesUp = m_selection.setCaretShown(true);
    scrollCodeTo(cursor);
    const bool isElsewhere = m_selection.select(anchor, cursor);
    if (isElsewhere) return handleSelectionMove();
    if (!comesUp) return;
    m_events.handleCaretMove();
    emit caretChanged();
}

void ReplyView::putCaret(ReplyPosition at) {
    forceActiveFocus(Qt::OtherFocusReason);
    moveCaret(at, at);
}

void ReplyView::copy() const {
    const ReplyRange selected = m_selection.range();
    QGuiApplication::clipboard()->setText(hasSelection() ? layout().written(selected) : raw());
}

QString ReplyView::spoken() const {
    return ScreenReader::isListening() && !isGrowing() ? spokenReply(raw()) : QString();
}

void ReplyView::accessibilityActiveChanged(bool) {
    emit spokenChanged();
}

void ReplyView::tellSpoken() {
    if (!isGrowing()) emit spokenChanged();
}

ReplyElements& ReplyView::elements() {
    if (!m_elements) m_elements = std::make_unique<ReplyElements>(*this);
    return *m_elements;
}

} // namespace vorq
