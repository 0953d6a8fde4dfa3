#pragma once

#include "platform/PortSupport.h"
#include "platform/ProcessId.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

class QObject;

namespace vorq {

/// A stretch of text in UTF-16 units. It comes from other programs: either number may be anything.
struct TextRange {
    std::int64_t location = 0;
    std::int64_t length = 0;

    bool operator==(const TextRange&) const = default;
};

class AccessibleElement;
/// Null if there is no such element.
using AccessibleElementPtr = std::shared_ptr<AccessibleElement>;

/// One element of another application's user interface, asked afresh at each read.
///
/// Rectangles and points are in accessibility coordinates: points, origin at the top left of the
/// primary screen, y downwards. A read that fails, for whatever reason, yields nothing; a write
/// says whether the application took it.
class AccessibleElement {
  public:
    AccessibleElement() = default;
    AccessibleElement(const AccessibleElement&) = delete;
    AccessibleElement& operator=(const AccessibleElement&) = delete;
    virtual ~AccessibleElement() = default;

    [[nodiscard]] virtual std::optional<QString> selectedText() const = 0;
    [[nodiscard]] virtual std::optional<TextRange> selectedTextRange() const = 0;
    [[nodiscard]] virtual std::optional<QString> value() const = 0;

    /// Whether it is a field that hides what is typed into it, such as one for passwords. Nothing
    /// if the application does not tell what kind of element it is.
    [[nodiscard]] virtual std::optional<bool> isPasswordField() const = 0;

    [[nodiscard]] virtual std::optional<QPointF> position() const = 0;
    [[nodiscard]] virtual std::optional<QSizeF> size() const = 0;
    [[nodiscard]] virtual std::optional<std::vector<AccessibleElementPtr>> children() const = 0;
    [[nodiscard]] virtual std::optional<QRectF> boundsForRange(TextRange range) const = 0;

    /// Where the selection is, for elements that know it by markers and not by a range.
    [[nodiscard]] virtual std::optional<QRectF> selectedTextMarkerBounds() const = 0;

    virtual bool setSelectedText(const QString& text) = 0;
    virtual bool setSelectedTextRange(TextRange range) = 0;
};

/// The user interfaces of other applications.
///
/// Reads are synchronous and may block, so that what decides by them stays plain logic: each read
/// depends on the one before, a walk makes thousands of them, and so neither a picture taken
/// beforehand nor a turn of the event loop for each would do. Such logic runs on a thread of its
/// own, one at a time. Whoever started it bounds it from outside by the stop token: once that is
/// stopped, a read under way returns soon and every further one yields nothing at once, so the
/// logic comes to its end by itself, and the window never waits for an application that hangs.
class Accessibility {
  public:
    Accessibility() = default;
    Accessibility(const Accessibility&) = delete;
    Accessibility& operator=(const Accessibility&) = delete;
    virtual ~Accessibility() = default;

    /// Whether applications can be read here at all, trusted or not, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    // These four never wait, and may be called on any thread.

    /// Whether the user lets us read other applications. Never asks them.
    [[nodiscard]] virtual bool isTrusted() const = 0;

    /// Whether a text that is written over a selection is one step to an application's own undo.
    [[nodiscard]] virtual bool writesInOneStep() const { return true; }

    /// Calls back, on the thread of the context, when isTrusted() may have changed.
    virtual void whenTrustChanges(QObject* context,
                                  const std::function<void()>& callback) const = 0;

    /// Has applications show us their windows, now and in later sessions. The user has agreed.
    virtual void requestTrust() = 0;

    /// The root of an application. The token bounds every read of it and of what it leads to; so
    /// it is with the elements below.
    [[nodiscard]] virtual AccessibleElementPtr application(ProcessId process,
                                                           std::stop_token stop) = 0;

    /// The window of an application that has the focus.
    [[nodiscard]] virtual AccessibleElementPtr focusedWindow(ProcessId process,
                                                             std::stop_token stop) = 0;

    /// The element that has the focus, in the process or else in the whole session.
    [[nodiscard]] virtual AccessibleElementPtr focusedElement(std::optional<ProcessId> process,
                                                              std::stop_token stop) = 0;

    /// Whether an application lets even a small question wait, as one that hangs. False for one
    /// that shows us nothing.
    [[nodiscard]] virtual bool isSilent(ProcessId process, std::stop_token stop) = 0;
};

} // namespace vorq
