#include "shell/panel/PanelSelectionBridge.h"

#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vorq {
namespace {

// Within this the two measures of a selection mean the same line.
constexpr double sameLineDistance = 24;
constexpr double visiblePillWidth = 1;

bool isTooShort(const QString& excerpt) {
    return graphemeCount(excerpt) < PanelSelectionBridge::minimumExcerpt;
}

} // namespace

void PanelSelectionBridge::watch(QObject* owner, SelectableText* text) {
    SelectableText* former = this->text();
    m_owner = owner;
    m_text = text;
    if (former && former != text) former->clearSelection();
}

bool PanelSelectionBridge::isWatching(const SelectableText* text) const {
    return text && this->text() == text;
}

void PanelSelectionBridge::setPillHitFrame(const QRectF& frame) {
    const std::optional<QRectF> next = frame.isEmpty() ? std::nullopt : std::optional(frame);
    if (std::exchange(m_pillHitFrame, next) != next) emit pillHitFrameChanged();
}

void PanelSelectionBridge::publish(const QString& selected, const std::optional<QRectF>& bounds,
                                   bool hasSelection) {
    if (std::exchange(m_selectedText, selected) != selected) emit selectedTextChanged();
    if (std::exchange(m_bounds, bounds) != bounds) emit selectionBoundsChanged();
    if (std::exchange(m_hasSelection, hasSelection) != hasSelection) emit hasSelectionChanged();
}

std::optional<QRectF> PanelSelectionBridge::anchorRect() const {
    const std::optional<QRectF> layout = text()->layoutSelectionRect();
    const std::optional<QRectF> ax = text()->axSelectionRect();
    if (!layout || !ax) return layout ? layout : ax;
    const double distance = std::abs(layout->center().y() - ax->center().y());
    return distance <= std::max(sameLineDistance, ax->height()) ? ax : layout;
}

void PanelSelectionBridge::refresh() {
    const std::optional<QString> selected = text() ? text()->selectedText() : std::nullopt;
    if (!selected || selected->isEmpty()) return clear();
    QString cleaned = *selected;
    cleaned.remove(QChar(QChar::ObjectReplacementCharacter));
    cleaned = trimmed(cleaned).toString();
    if (isTooShort(cleaned)) return clear();
    publish(cleaned, anchorRect(), true);
}

void PanelSelectionBridge::clear() {
    publish({}, std::nullopt, false);
    setPillHitFrame({});
}

bool PanelSelectionBridge::commitDeepen() {
    const QString excerpt = trimmed(m_selectedText).toString();
    if (isTooShort(excerpt)) return false;
    if (SelectableText* selected = text()) selected->clearSelection();
    clear();
    if (!m_onDeepen) return false;
    m_onDeepen(excerpt);
    return true;
}

bool PanelSelectionBridge::shouldClearSelection(const Click& click) const {
    const SelectableText* selected = text();
    if (!selected || !selected->selectedText()) return false;
    if (click.isInOtherWindow) return true;
    if (selected->isPointInSelection(click.globalPoint)) return false;
    if (!m_pillHitFrame || m_pillHitFrame->width() <= visiblePillWidth) return true;
    const QRectF grown = m_pillHitFrame->adjusted(-pillSlack, -pillSlack, pillSlack, pillSlack);
    return !grown.contains(click.point);
}

} // namespace vorq
