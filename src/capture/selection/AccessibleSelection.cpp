#include "capture/selection/AccessibleSelection.h"

#include "capture/selection/SelectionBounds.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <deque>

namespace vorq {
namespace {

// The location that stands for "nowhere".
constexpr std::int64_t noLocation = -1;

bool isBlankText(const std::optional<QString>& text) {
    return !text || trimmed(*text).isEmpty();
}

bool hasLength(const std::optional<TextRange>& range) {
    return range && range->length >= 1;
}

bool isPlaced(const std::optional<TextRange>& range) {
    return hasLength(range) && range->location != noLocation;
}

// Nothing if the range does not lie within the text.
std::optional<QString> slice(const std::optional<QString>& text, TextRange range) {
    if (!text || range.location < 0 || range.location > text->size()) return std::nullopt;
    if (range.length > text->size() - range.location) return std::nullopt;
    return text->sliced(range.location, range.length);
}

AccessibleElementPtr focusedElement(const CaptureSource& source) {
    return source.accessibility.focusedElement(source.process, source.stop);
}

AccessibleElementPtr capturedElement(const CaptureSource& source) {
    const AccessibleElementPtr focused = focusedElement(source);
    if (focused && elementHasSelection(*focused)) return focused;
    const AccessibleElementPtr owner = selectionOwningElement(source);
    return owner ? owner : focusedElement(source);
}

std::optional<QRectF> boundsOf(TextRange range, const AccessibleElement& element,
                               const std::optional<QRectF>& frame) {
    const std::optional<QRectF> bounds = selectionAXBounds(range, element, frame);
    return bounds ? bounds : textMarkerSelectionBounds(element);
}

std::optional<AXCapture> captureOfRange(TextRange range, const AccessibleElement& element,
                                        const std::optional<QRectF>& frame) {
    QString text = element.selectedText().value_or(QString());
    if (text.isEmpty()) text = slice(element.value(), range).value_or(QString());
    if (isBlankText(text)) return std::nullopt;
    return AXCapture{.text = text,
                     .rawAXFrame = boundsOf(range, element, frame),
                     .elementAXFrame = frame,
                     .selectedRange = range};
}

std::optional<AXCapture> captureOfText(const AccessibleElement& element,
                                       const std::optional<QRectF>& frame) {
    const std::optional<QString> text = element.selectedText();
    if (isBlankText(text)) return std::nullopt;
    const std::optional<TextRange> range = element.selectedTextRange();
    return AXCapture{.text = *text,
                     .rawAXFrame = hasLength(range)
                                       ? boundsOf(*range, element, elementAXFrame(element))
                                       : textMarkerSelectionBounds(element),
                     .elementAXFrame = frame,
                     .selectedRange = element.selectedTextRange()};
}

} // namespace

bool elementHasSelection(const AccessibleElement& element) {
    return !isBlankText(element.selectedText()) || hasLength(element.selectedTextRange());
}

AccessibleElementPtr selectionOwningElement(const CaptureSource& source) {
    if (!source.process) return nullptr;
    std::deque<AccessibleElementPtr> queue{
        source.accessibility.focusedWindow(*source.process, source.stop),
        source.accessibility.application(*source.process, source.stop)};
    std::erase(queue, nullptr);
    for (int budget = selectionWalkBudget; budget > 0 && !queue.empty(); --budget) {
        const AccessibleElementPtr element = std::move(queue.front());
        queue.pop_front();
        if (elementHasSelection(*element)) return element;
        const auto children = element->children();
        if (!children) continue;
        // What lies beyond the budget is never looked at.
        for (const AccessibleElementPtr& child : *children)
            if (child && queue.size() < selectionWalkBudget) queue.push_back(child);
    }
    return nullptr;
}

std::optional<AXCapture> captureFromFocusedAccessibilityElement(const CaptureSource& source) {
    const AccessibleElementPtr element = capturedElement(source);
    if (!element) return std::nullopt;
    const std::optional<QRectF> frame = elementAXFrame(*element);
    const std::optional<TextRange> range = element->selectedTextRange();
    return isPlaced(range) ? captureOfRange(*range, *element, frame)
                           : captureOfText(*element, frame);
}

QString captureSelectedTextFromFocusedElement(const CaptureSource& source) {
    const AccessibleElementPtr element = focusedElement(source);
    if (!element || !elementHasSelection(*element)) return {};
    if (const std::optional<TextRange> range = element->selectedTextRange(); isPlaced(range)) {
        const std::optional<QString> text = element->selectedText();
        if (!isBlankText(text)) return trimmed(*text).toString();
        if (const auto cut = slice(element->value(), *range)) return trimmed(*cut).toString();
    }
    return trimmed(element->selectedText().value_or(QString())).toString();
}

QString captureSelectedTextAXOnly(const CaptureSource& source) {
    if (!source.accessibility.isTrusted()) return {};
    const std::optional<AXCapture> capture = captureFromFocusedAccessibilityElement(source);
    return capture ? trimmed(capture->text).toString() : QString();
}

std::optional<QRectF> focusedAXFrame(const CaptureSource& source) {
    const AccessibleElementPtr element = focusedElement(source);
    const auto frame = element ? elementAXFrame(*element) : std::nullopt;
    return frame ? frame : focusedWindowAXFrame(source);
}

std::optional<QRectF> focusedWindowAXFrame(const CaptureSource& source) {
    if (!source.process) return std::nullopt;
    const AccessibleElementPtr window =
        source.accessibility.focusedWindow(*source.process, source.stop);
    return window ? elementAXFrame(*window) : std::nullopt;
}

bool tellsThatNothingIsSelected(const CaptureSource& source) {
    const AccessibleElementPtr element = focusedElement(source);
    if (!element || elementHasSelection(*element)) return false;
    const std::optional<TextRange> range = element->selectedTextRange();
    return range && range->length < 1;
}

bool isPasswordFocused(const CaptureSource& source) {
    const AccessibleElementPtr element = focusedElement(source);
    return element && element->isPasswordField().value_or(false);
}

QString longerSelectedText(const QString& ax, const QString& copied) {
    return graphemeCount(ax) >= graphemeCount(copied) ? ax : copied;
}

} // namespace vorq
