#pragma once

#include "platform/Accessibility.h"

#include <QRectF>
#include <QString>

#include <optional>
#include <stop_token>

namespace vorq {

/// What one read by accessibility found selected.
struct AXCapture {
    /// As the element gave it, untrimmed.
    QString text;
    /// The bounds of the selected glyphs, in accessibility coordinates.
    std::optional<QRectF> rawAXFrame;
    /// The frame of the element that owns the selection, in the same coordinates.
    std::optional<QRectF> elementAXFrame;
    /// Offsets into the element's value.
    std::optional<TextRange> selectedRange;

    bool operator==(const AXCapture&) const = default;
};

/// From where a selection is read. Without a process the session's focus stands for it.
struct CaptureSource {
    Accessibility& accessibility;
    std::optional<ProcessId> process;
    /// Once stopped, whatever is under way ends soon; its result is then worth nothing.
    std::stop_token stop;
};

/// The functions below block while they read; see Accessibility for the thread. Text of nothing
/// but white space is no selection to any of them.

[[nodiscard]] bool elementHasSelection(const AccessibleElement& element);

/// The most elements that a walk looks at.
constexpr int selectionWalkBudget = 2500;

/// The first element of the process that has a selection, by a bounded walk that looks at what is
/// near the root first; null without a process.
[[nodiscard]] AccessibleElementPtr selectionOwningElement(const CaptureSource& source);

/// The selection of the focused element, else of whatever element has one; nothing without text.
[[nodiscard]] std::optional<AXCapture>
captureFromFocusedAccessibilityElement(const CaptureSource& source);

/// The text selected in the focused element alone, trimmed; it takes a handful of reads.
[[nodiscard]] QString captureSelectedTextFromFocusedElement(const CaptureSource& source);

/// The text of captureFromFocusedAccessibilityElement, trimmed; "" without trust, and without any
/// read.
[[nodiscard]] QString captureSelectedTextAXOnly(const CaptureSource& source);

/// The frame of the element that has the focus, else of the window that has it, in accessibility
/// coordinates.
[[nodiscard]] std::optional<QRectF> focusedAXFrame(const CaptureSource& source);

/// The frame of the process's window that has the focus; nothing without a process.
[[nodiscard]] std::optional<QRectF> focusedWindowAXFrame(const CaptureSource& source);

/// Whether the focused element has text and says that none of it is selected, rather than not
/// saying anything.
[[nodiscard]] bool tellsThatNothingIsSelected(const CaptureSource& source);

/// Whether the focused element is known to hide what is typed into it. Then nothing of the
/// application may be captured by any other way either: highlights hold passwords in clear.
[[nodiscard]] bool isPasswordFocused(const CaptureSource& source);

/// Of a text read by accessibility and one that was copied, the one with more characters; the
/// former if they are equal.
[[nodiscard]] QString longerSelectedText(const QString& ax, const QString& copied);

} // namespace vorq
