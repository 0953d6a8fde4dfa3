#pragma once

#include "capture/selection/CaptureMiss.h"

#include <QString>

#include <utility>

namespace vorq {

/// The text that a capture found.
struct CapturedText {
    /// Trimmed; "" for nothing.
    QString text;
    /// It reads like a secret, and nothing tells that it is none. The user is asked before it goes
    /// anywhere: not to the backend, not into a note, not into a log.
    bool isHeldBack = false;
    /// Without a text.
    CaptureMiss miss = CaptureMiss::NothingHighlighted;

    CapturedText() = default;
    /// A text that need not be held back.
    CapturedText(QString passed) // NOLINT(google-explicit-constructor): as texts are given
        : text(std::move(passed)) {}

    [[nodiscard]] static CapturedText none(CaptureMiss miss);

    /// One that an application told by accessibility, which it does not do of passwords. Bullets
    /// are held back all the same.
    [[nodiscard]] static CapturedText told(const QString& text);

    /// One that came from a highlight or the clipboard, which hold passwords, too.
    [[nodiscard]] static CapturedText found(const QString& text);

    [[nodiscard]] bool isEmpty() const { return text.isEmpty(); }

    bool operator==(const CapturedText&) const = default;
};

} // namespace vorq
